// What the generator refuses: each fault with its file and its line.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "messagegen/Generate.h"

namespace twqb::messagegen {
namespace {

// What is said of the text; empty when it is taken.
std::string Refusal(const std::vector<SourceFile>& files) {
  try {
    (void)ReadTable(files);
  } catch (const BadInput& fault) {
    return fault.what();
  }
  return {};
}

struct Fault {
  std::string name;
  std::string text;
  std::string told;  // behind "Bad.messages:"
};

class Refusals : public testing::TestWithParam<Fault> {};

TEST_P(Refusals, Name_the_file_the_line_and_what_is_wrong) {
  EXPECT_EQ(Refusal({{.name = "Bad.messages", .text = GetParam().text}}), "Bad.messages:" + GetParam().told);
}

// What goes into a message whose request begins on the third line.
std::string InRequest(std::string_view rows) {
  return fmt::format("message Widget @1.0 {{\n  request {{\n{}\n  }}\n}}\n", rows);
}

std::string Name(const testing::TestParamInfo<Fault>& fault) { return fault.param.name; }

INSTANTIATE_TEST_SUITE_P(
    OfSigns, Refusals,
    testing::Values(
        Fault{"A_character_without_a_meaning", InRequest("A:s\nB:s;"), "4: the character ';' has no meaning here"},
        Fault{"A_word_that_begins_nothing", "# first\n\nwidget Widget\n",
              "3: \"widget\" begins no definition and no message"},
        Fault{"A_sign_that_begins_nothing", "}\n", "1: \"}\" begins no definition and no message"},
        Fault{"A_name_without_a_capital", InRequest("name:s"),
              "3: a name, which begins with a capital, is expected, not \"name\""},
        Fault{"An_element_without_a_type", InRequest("A:\nB:s"), "3: a type is expected, not the end of the line"},
        Fault{"Two_elements_without_a_comma", InRequest("A:s B:s"),
              "3: a new line, a comma or \"}\" is expected, not \"B\""},
        Fault{"A_comma_with_nothing_before_it", InRequest(", A:s"), "3: there is nothing before the comma"},
        Fault{"A_bracket_that_is_not_closed", "message Widget @1.0 {\n  request { A:s\n",
              "3: a name, which begins with a capital, is expected, not the end of the file"},
        Fault{"Branches_with_a_comma", InRequest("ORPrice[ A:s, B:s ]"), "3: \"|\" or \"]\" is expected, not \",\""},
        Fault{"A_choice_without_branches", InRequest("ORPrice[]"),
              "3: a name, which begins with a capital, is expected, not \"]\""},
        Fault{"A_definition_on_the_line_of_another", "names A 5 names B 5\n",
              "1: a new line is expected, not \"names\""},
        Fault{"A_message_with_a_third_part", "message Widget @1.0 {\n  question { A:s }\n}\n",
              "2: \"}\" is expected, not \"question\""}),
    Name);

INSTANTIATE_TEST_SUITE_P(
    OfMarks, Refusals,
    testing::Values(
        Fault{"A_mark_that_is_none", InRequest("A:s FR"), "3: a new line, a comma or \"}\" is expected, not \"FR\""},
        Fault{"A_country_that_is_none", InRequest("A:s US+FR"), "3: US, CA or UK is expected, not \"FR\""},
        Fault{"A_country_twice", InRequest("A:s CA+CA"), "3: \"CA\" stands twice"},
        Fault{"An_obligation_twice", InRequest("A??:s"), "3: \"?\" stands twice"},
        Fault{"Two_first_versions", InRequest("A:s @1.1 @2.0"), "3: two marks of one kind stand here"},
        Fault{"Two_sets_of_countries", InRequest("A:s US CA"), "3: two marks of one kind stand here"},
        Fault{"A_version_without_a_point", InRequest("A:s @3"), "3: \"@3\" is no version"},
        Fault{"A_version_that_is_no_number", InRequest("A:s @3.x"), "3: \"x\" is no number"},
        Fault{"A_version_of_a_form_without_its_own", InRequest("A:s @UK3.0"), "3: \"UK3\" is no number"},
        Fault{"A_number_beyond_all_numbers", "names A 99999999999\n", "1: \"99999999999\" is no number"},
        Fault{"An_end_before_the_beginning", InRequest("A:s @3.0 <2.0"), "3: ends before it begins"},
        Fault{"An_end_at_the_beginning", InRequest("A:s @3.0 <3.0"), "3: ends before it begins"},
        Fault{"A_Canadian_version_outside_of_Canada", InRequest("A:s @CA3.0 US+UK"),
              "3: the Canadian form has a version of its own for what it does not know"},
        Fault{"A_Canadian_version_in_Canada_alone", InRequest("A:s @CA3.0 CA"),
              "3: what Canada alone knows needs no second version"},
        Fault{"Two_attributes", InRequest("A:s attr defMacro attr useMacro"),
              "3: an element has one attribute at most"},
        Fault{"An_attribute_without_a_name", InRequest("A:s attr"),
              "3: the name of an attribute is expected, not the end of the line"},
        Fault{"An_attribute_of_a_choice", InRequest("ORPrice[ A:s | B:s ] attr defMacro"),
              "3: an attribute is an element's"},
        Fault{"An_attribute_of_a_message", "message Widget @1.0 attr defMacro {\n  request { A:s }\n}\n",
              "1: an attribute is an element's"},
        Fault{"A_message_without_its_first_version", "record Box { A:s }\nadd Box US\n",
              "2: the first version of Box is missing, as in @1.0"},
        Fault{"A_free_message_without_its_first_version", "message Widget {\n  request { A:s }\n}\n",
              "1: the first version of Widget is missing, as in @1.0"},
        Fault{"A_message_with_a_first_version_in_Canada_alone", "message Widget @CA2.0 {\n  request { A:s }\n}\n",
              "1: the first version of Widget is missing, as in @1.0"},
        Fault{"An_attribute_of_a_value", InRequest("A\n") + "enum A {\n Red attr defMacro\n}\n",
              "8: an attribute is an element's"},
        Fault{"A_step_that_may_be_left_out", InRequest("Filter?( A:s )"),
              "3: Filter leaves no element and takes no ? or *"},
        Fault{"A_step_that_repeats", InRequest("Filter*( A:s )"), "3: Filter leaves no element and takes no ? or *"},
        Fault{"In_nothing", InRequest("A:s in"), "3: Add, Mod or Ret is expected, not the end of the line"},
        Fault{"A_role_twice", InRequest("A:s in Add Mod Add"), "3: \"Add\" stands twice"},
        Fault{"A_role_where_there_is_none", InRequest("A:s in Add"),
              "3: A depends on Add, Mod and Ret, and is used where there is none of them"}),
    Name);

INSTANTIATE_TEST_SUITE_P(
    OfTypes, Refusals,
    testing::Values(
        Fault{"A_type_that_is_none", InRequest("A:text"), "3: there is no type \"text\""},
        Fault{"A_length_of_what_is_no_text", InRequest("A:b5"), "3: there is no type \"b5\""},
        Fault{"A_text_without_characters", InRequest("A:s0"), "3: there is no type \"s0\""},
        Fault{"A_type_that_nothing_defines", InRequest("A?:Address"), "3: Address is no aggregate and no enumeration"},
        Fault{"A_group_for_a_type", InRequest("A") + "group A { B:s }\n", "3: A is no aggregate and no enumeration"},
        Fault{"A_group_that_nothing_defines", InRequest("+Identity"), "3: Identity is no group"},
        Fault{"A_list_of_names_that_nothing_defines", InRequest("A:Ref(Shelf)") + "aggregate Ref { B:path }\n",
              "3: Shelf is no list of names and no record"},
        Fault{"A_record_that_tells_no_names",
              InRequest("A:Ref(Box)") + "aggregate Ref { B:path }\nrecord Box { C:s }\n",
              "3: the record Box does not tell its names"},
        Fault{"Names_for_a_plain_type", InRequest("A:s41(Shelf)") + "names Shelf 5\n", "3: s41 takes no list of names"},
        Fault{"Names_for_an_enumeration", InRequest("A:Colour(Shelf)") + "names Shelf 5\nenum Colour { Red }\n",
              "3: an enumeration takes no list of names"},
        Fault{"A_record_in_a_request", InRequest("A:Box") + "record Box { B:s }\n",
              "3: Box is no aggregate and no enumeration"},
        Fault{"Names_for_a_record",
              "message Widget @1.0 {\n  answer { A:Box(Shelf) }\n}\nrecord Box { B:s }\nnames Shelf 5\n",
              "2: a record takes no list of names"},
        Fault{"A_name_where_there_are_none", InRequest("A:name"),
              "3: there are no names here that tell how long a name is"},
        Fault{"A_path_of_a_record_that_tells_no_names", "record Box {\n  B:path\n}\nadd Box @1.0\n",
              "2: there are no names here that tell how long a path is"},
        Fault{"A_name_without_length", "names Shelf 0\n", "1: a name has a length"},
        Fault{"A_path_without_levels", "names Shelf 0 x 31\n", "1: a name has a length"}),
    Name);

INSTANTIATE_TEST_SUITE_P(
    OfTheWhole, Refusals,
    testing::Values(
        Fault{"Two_definitions_of_a_name", InRequest("A") + "enum A { Red }\naggregate A { B:s }\n",
              "7: A is defined in Bad.messages:6 already"},
        Fault{"A_definition_that_nothing_uses", InRequest("A:s") + "group Lost { B:s }\n", "6: Lost is used nowhere"},
        Fault{"A_record_without_a_message", "\nrecord Box { A:s }\n", "2: Box is used nowhere"},
        Fault{"Two_messages_of_a_name", InRequest("A:s") + "message Widget @1.0 { request { A:s } }\n",
              "6: there is a message Widget already"},
        Fault{"Two_messages_of_a_name_that_they_come_to",
              "record Box { A:s }\nadd Box @1.0\nmessage BoxAdd @1.0 { request { A:s } }\n",
              "3: there is a message BoxAdd already"},
        Fault{"A_message_of_no_record", "add Box @1.0\n", "1: Box is no record"},
        Fault{"A_message_of_what_is_no_record", "aggregate Box { A:s }\nmod Box @1.0\n", "2: Box is no record"},
        Fault{"An_element_twice", InRequest("A:s\nB?{\n  C:s, C:i\n}"), "5: C stands twice in WidgetRq/B"},
        Fault{"An_element_of_a_group_twice", "record Box {\n  A:s\n  +More\n}\ngroup More { A:i }\nadd Box @1.0\n",
              "5: A stands twice in Box"},
        Fault{"An_element_twice_that_one_form_knows_twice", InRequest("B{\n A:s CA+UK\n A:i UK\n}"),
              "5: A stands twice in WidgetRq/B"},
        Fault{"An_element_twice_with_versions_that_meet", InRequest("B{\n A:s <3.0\n A:i @2.1\n}"),
              "5: A stands twice in WidgetRq/B"},
        Fault{"A_branch_twice", InRequest("ORPrice[ A:s | A:i ]"), "3: A stands twice in WidgetRq/ORPrice"},
        Fault{"Two_branches_with_one_beginning",
              InRequest("ORPrice[\n  A:s\n  | Terms( B?:i, ORRate[ C:s | A:s ] )\n]"),
              "5: two branches begin with A in WidgetRq/ORPrice"},
        Fault{"Nothing_left_for_a_role", "record Box {\n  A:s in Ret\n}\nadd Box @1.0\n",
              "1: nothing is left in Box for Add"},
        Fault{"Marks_for_a_role_without_a_message", "record Box {\n  A:s\n  B?{\n    C:i Mod?\n  }\n}\nadd Box @1.0\n",
              "4: C has marks for Mod, and no message has it there"},
        Fault{"An_aggregate_without_elements", InRequest("A") + "aggregate A {\n}\n", "6: there is nothing in A"},
        Fault{"A_group_without_elements", InRequest("A{ +B }") + "group B { }\n", "3: there is nothing in WidgetRq/A"},
        Fault{"An_enumeration_without_values", InRequest("A") + "enum A { }\n", "6: A has no values"},
        Fault{"A_value_twice", InRequest("A") + "enum A { Red, Blue\n Red }\n", "7: A has two values Red"},
        Fault{"A_number_twice", InRequest("A") + "enum A { Red=1, Blue\n Green=2 }\n",
              "7: A has two values of the number 2"},
        Fault{"An_aggregate_in_itself", InRequest("A") + "aggregate A {\n  B?{ A? }\n}\n", "7: A is a part of itself"},
        Fault{"A_group_in_itself", InRequest("+A") + "group A {\n B:s\n +C\n}\ngroup C { +A }\n",
              "10: A is a part of itself"}),
    Name);

TEST(RefusalsAcrossFiles, Name_the_file_in_which_the_fault_is) {
  const SourceFile first = {.name = "one/First.messages", .text = "message Box @1.0 {\n  request { Colour }\n}\n"};
  EXPECT_EQ(Refusal({first, {.name = "two/Second.messages", .text = "\n\nenum Colour { Red\n Red }\n"}}),
            "two/Second.messages:4: Colour has two values Red");
  EXPECT_EQ(Refusal({first,
                     {.name = "Second.messages", .text = "enum Colour { Red }\n"},
                     {.name = "Third.messages", .text = "# Colours\nenum Colour { Blue }\n"}}),
            "Third.messages:2: Colour is defined in Second.messages:1 already");
  EXPECT_EQ(Refusal({first, {.name = "Second.messages", .text = "enum Colour { Red }\n"}}), "");
}

TEST(Taken, Is_a_name_that_stands_twice_where_no_form_knows_both) {
  for (const auto* rows :
       {"A:s US, A:i CA", "A:s <3.0\nA:i @3.0", "A:s nowhere, A:i", "A:s @CA2.0 CA+UK <3.0, A:i @3.0"}) {
    EXPECT_EQ(Refusal({{.name = "Good.messages", .text = InRequest(rows)}}), "") << rows;
  }
  EXPECT_EQ(Refusal({{.name = "Good.messages", .text = InRequest("ORPrice[ A:s US | Terms( A:s, B:s ) CA ]")}}), "");
}

TEST(Taken, Are_lines_that_end_as_other_systems_end_them) {
  EXPECT_EQ(Refusal({{.name = "Good.messages", .text = "message Box @1.0 {\r\n  request { A:s }\r\n}\r\n"}}), "");
  EXPECT_EQ(Refusal({{.name = "Good.messages", .text = "message Box @1.0 { request { A:s } }"}}), "");
  EXPECT_EQ(Refusal({{.name = "Bad.messages", .text = "# one\r\n\r\nbox\r\n"}}),
            "Bad.messages:3: \"box\" begins no definition and no message");
}

}  // namespace
}  // namespace twqb::messagegen
