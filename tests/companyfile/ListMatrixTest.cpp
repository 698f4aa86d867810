// What holds for every kind of list in every country form.

#include <algorithm>
#include <sstream>

#include "ListTest.h"
#include "adapters/companyfile/ListKind.h"
#include "messages/Schema.h"
#include "messages/Validation.h"

namespace twqb::company {

namespace {

using messages::Country;
using messages::Element;
using messages::Type;

std::string Replace(std::string text, std::string_view from, std::string_view to) {
  const auto at = text.find(from);
  EXPECT_NE(at, std::string::npos) << text << " has no " << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

bool HasRow(std::span<const Element> rows, std::string_view name) {
  return std::ranges::any_of(rows, [&](const Element& row) { return row.name == name; });
}

class EveryList : public ListTest, public testing::WithParamInterface<ListSample> {
 protected:
  void SetUp() override {
    MakeFile({.country = sample_.country});
    tag_ = sample_.Tag();
    for (const auto& answer : SendAll(ListSampleTargets(sample_.country), tag_)) {
      ASSERT_EQ(answer.code, 0) << answer.message;
    }
  }
  [[nodiscard]] messages::Form GetForm() const { return {.country = sample_.country, .version = {3, 0}}; }
  [[nodiscard]] static std::span<const Element> RowsOf(const std::string& message) {
    return messages::FindMessage(message)->request.front().Children();
  }
  [[nodiscard]] std::span<const Element> AddRows() const { return RowsOf(kind_ + "Add"); }
  [[nodiscard]] bool HasParents() const { return HasRow(AddRows(), "ParentRef"); }
  [[nodiscard]] bool IsNamedByParts() const { return kind_ == "Employee"; }

  // The Add with another name.
  [[nodiscard]] std::string Named(const std::string& name) const {
    const auto& was = sample_.kind.ends_with("TaxCode") ? kShortName : kName;
    auto fields = Replace(sample_.fields, ">" + was + "<", ">" + name + "<");
    if (kind_ == "Account") fields = Replace(fields, "<AccountNumber>1000</AccountNumber>", "");
    return fields;
  }
  [[nodiscard]] std::string NamedUnder(const std::string& name, const std::string& parent) const {
    const std::string active = "<IsActive>true</IsActive>";
    return Replace(Named(name), active, active + "<ParentRef>" + parent + "</ParentRef>");
  }
  std::string AddSample() { return AddId(kind_, sample_.fields); }
  std::vector<std::string> NamesOf(const std::string& conditions) {
    auto names = QueryOf(kind_, conditions).All(IsNamedByParts() ? "FirstName" : "Name");
    std::erase_if(names, [](const std::string& name) { return !name.starts_with("Q") || name.size() > 3; });
    return names;
  }

  // Each leaf of `given` stands in `answered` with the same text, as often and in the same order.
  static void ExpectEchoed(pugi::xml_node given, pugi::xml_node answered) {
    static const std::vector<std::string_view> kNotAnswered = {"OpenBalance", "OpenBalanceDate", "TotalValue"};
    for (const auto field : given.children()) {
      const std::string_view name = field.name();
      if (std::ranges::find(kNotAnswered, name) != kNotAnswered.end()) continue;
      const auto back = answered.child(field.name());
      ASSERT_TRUE(back) << name;
      if (field.first_child().type() == pugi::node_element) {
        ExpectEchoed(field, back);
      } else {
        EXPECT_STREQ(field.text().get(), back.text().get()) << name;
      }
    }
  }

  const ListSample& sample_ = GetParam();
  const std::string& kind_ = sample_.kind;
  inline static const std::string kName = "Sample";
  inline static const std::string kShortName = "Smp";
};

class EveryNestedList : public EveryList {};
class EveryChangeableList : public EveryList {};
class EveryDeletableList : public EveryList {
 protected:
  // What the form's deletion calls the list: the British form has no name of its own for tax codes.
  [[nodiscard]] std::string DeletedAs() const {
    return kind_ == "TaxCode" && sample_.country == Country::UK ? "SalesTaxCode" : kind_;
  }
};

TEST_P(EveryList, A_right_Add_is_answered_with_its_fields_in_the_form_of_its_message) {
  const auto answer = AddTo(kind_, sample_.fields);
  ASSERT_EQ(answer.code, 0) << answer.message;
  EXPECT_EQ(answer.message, "Status OK");
  pugi::xml_document given;
  ASSERT_TRUE(given.load_string(sample_.fields.c_str(), pugi::parse_default | pugi::parse_fragment));
  ExpectEchoed(given, answer.node.first_child());
  const auto& record = messages::FindMessage(kind_ + "Add")->response.front();
  for (const auto& problem : messages::Validate(answer.node.first_child(), record.Children(), GetForm())) {
    ADD_FAILURE() << problem.field << " " << problem.value;
  }
  if (HasRow(record.Children(), "Balance")) {
    EXPECT_EQ(answer.Value("Balance"), "97.50");
  }
}

TEST_P(EveryList, A_record_is_found_by_identifier_by_name_and_among_all) {
  const auto answer = AddTo(kind_, sample_.fields);
  const auto id = answer.Value("ListID");
  const auto name = answer.Value("Name");
  const auto added = text_.substr(text_.find("<ListID>"), text_.rfind("Ret>") - text_.find("<ListID>"));
  for (const auto& conditions : {Id(id), "<FullName>" + name + "</FullName>", std::string{}}) {
    EXPECT_EQ(QueryOf(kind_, conditions).code, 0) << conditions;
    EXPECT_NE(text_.find(added), std::string::npos) << text_;
  }
  EXPECT_EQ(QueryOf(kind_, Id("80009999-1")).code, 500);
}

TEST_P(EveryList, An_element_that_is_unknown_or_out_of_order_refuses_the_document) {
  EXPECT_EQ(RefusalOfRequest(AddText(kind_, sample_.fields + "<Colour>red</Colour>"), tag_), kRefused);
  const std::string active = "<IsActive>true</IsActive>";
  const auto others = Replace(sample_.fields, active, "");
  const auto disordered = IsNamedByParts() ? others + active : active + others;
  EXPECT_EQ(RefusalOfRequest(AddText(kind_, disordered), tag_), kRefused);
  EXPECT_EQ(RefusalOfRequest(QueryText(kind_, "<Colour>red</Colour>"), tag_), kRefused);
}

TEST_P(EveryList, A_name_that_is_too_long_is_refused) {
  const auto answer = AddTo(kind_, Named(std::string(150, 'x')));
  EXPECT_EQ(answer.code, 3070);
  EXPECT_EQ(answer.message,
            "The string \"" + std::string(150, 'x') + "\" in the field \"" + sample_.NameElement() + "\" is too long.");
}

TEST_P(EveryList, A_name_with_a_colon_is_refused) { EXPECT_EQ(AddTo(kind_, Named("A:B")).code, 3090); }

TEST_P(EveryList, A_name_in_use_is_refused_whatever_its_case) {
  AddSample();
  const auto name = kind_.ends_with("TaxCode") ? "sMP" : "sAMPLE";
  const auto answer = AddTo(kind_, Named(name));
  EXPECT_EQ(answer.code, kind_ == "ItemPayment" ? 3180 : 3100);
  EXPECT_EQ(answer.severity, "Error");
  EXPECT_FALSE(answer.node.first_child());
}

TEST_P(EveryList, An_element_that_is_missing_is_told) {
  for (const auto& row : AddRows()) {
    if (row.optional || !row.KnownIn(GetForm()) || row.LeavesNoElement()) continue;
    pugi::xml_document given;
    ASSERT_TRUE(given.load_string(AddText(kind_, sample_.fields).c_str()));
    auto fields = given.first_child().first_child();
    ASSERT_TRUE(fields.remove_child(std::string(row.name).c_str())) << row.name;
    std::ostringstream text;
    given.print(text, "", pugi::format_raw | pugi::format_no_declaration);
    const auto answer = Send(text.str(), tag_);
    EXPECT_EQ(answer.code, 3150);
    EXPECT_EQ(answer.message, "There is a missing element: \"" + std::string(row.name) + "\".");
  }
  if (IsNamedByParts()) {
    EXPECT_EQ(AddTo(kind_, "<Phone>1</Phone>").code, 3150);
  }
}

TEST_P(EveryList, An_amount_without_two_decimals_is_refused) {
  for (const auto& row : AddRows()) {
    if (row.type != Type::Amt || !row.KnownIn(GetForm())) continue;
    pugi::xml_document given;
    ASSERT_TRUE(given.load_string(AddText(kind_, sample_.fields).c_str()));
    auto field = given.first_child().first_child().child(std::string(row.name).c_str());
    ASSERT_TRUE(field) << "the sample has no " << row.name;
    field.text().set("97.5");
    std::ostringstream text;
    given.print(text, "", pugi::format_raw | pugi::format_no_declaration);
    EXPECT_EQ(Send(text.str(), tag_).code, 3040) << row.name;
  }
}

// Each reference of the Add in its turn names something else.
TEST_P(EveryList, A_reference_that_names_nothing_something_deleted_or_something_else_is_refused) {
  const auto gone = AddId("Class", "<Name>Gone</Name>");
  ASSERT_EQ(Delete("Class", gone).code, 0);
  const auto other = AddId("Vendor", "<Name>Other</Name>");
  const auto elsewhere = AddId("JobType", "<Name>Elsewhere</Name>");
  pugi::xml_document given;
  ASSERT_TRUE(given.load_string(AddText(kind_, sample_.fields).c_str()));
  for (const auto& found : given.select_nodes("//*[FullName]")) {
    auto reference = found.node();
    const std::string was = reference.child("FullName").text().get();
    const auto answerTo = [&](const char* element, const std::string& value) {
      reference.remove_children();
      reference.append_child(element).text().set(value.c_str());
      std::ostringstream text;
      given.print(text, "", pugi::format_raw | pugi::format_no_declaration);
      return Send(text.str(), tag_);
    };
    const auto dead = answerTo("FullName", "No?");
    EXPECT_EQ(dead.code, 3140) << reference.name();
    const auto target = std::string(reference.name(), std::string_view(reference.name()).size() - 3);
    EXPECT_EQ(dead.message,
              "There is an invalid reference to QuickBooks " + target + " \"No?\" in the " +
                  (std::string_view(reference.parent().name()) == "ItemGroupLine" ? "item group line" : kind_) +
                  ".  QuickBooks error message: Invalid argument.  The specified record does not exist in "
                  "the list.");
    EXPECT_EQ(answerTo("ListID", "80009999-1").code, 3140) << reference.name();
    EXPECT_EQ(answerTo("ListID", gone).code, 3240) << reference.name();
    const bool takesVendors = std::string_view(reference.name()).find("Vendor") != std::string_view::npos;
    EXPECT_EQ(answerTo("ListID", takesVendors ? elsewhere : other).code, 3240) << reference.name();
    static_cast<void>(answerTo("FullName", was));
  }
}

TEST_P(EveryNestedList, A_record_stands_under_a_parent_of_its_own_kind) {
  const auto top = AddSample();
  const auto below = AddTo(kind_, NamedUnder("Below", "<FullName>SAMPLE</FullName>"));
  ASSERT_EQ(below.code, 0) << below.message;
  EXPECT_EQ(below.Value("FullName"), "Sample:Below");
  EXPECT_EQ(below.Value("Sublevel"), "1");
  EXPECT_EQ(below.Value("ParentRef/ListID"), top);
  EXPECT_EQ(AddTo(kind_, NamedUnder("BELOW", Id(top))).code, 3100);
  EXPECT_EQ(AddTo(kind_, NamedUnder("Deep", "<FullName>Sample:Below</FullName>")).Value("Sublevel"), "2");

  EXPECT_EQ(AddTo(kind_, NamedUnder("Lost", "<FullName>Nobody</FullName>")).code, 3130);
  EXPECT_EQ(AddTo(kind_, NamedUnder("Lost", Id("80009999-1"))).code, 3130);
  const auto other = AddId("Vendor", "<Name>Other</Name>");
  EXPECT_EQ(AddTo(kind_, NamedUnder("Lost", Id(other))).code, 3240);
  EXPECT_EQ(Delete("Vendor", other).code, 0);
  EXPECT_EQ(AddTo(kind_, NamedUnder("Lost", Id(other))).code, 3240);
}

TEST_P(EveryList, An_inactive_record_comes_when_it_is_asked_for) {
  auto fields = Named("Qb");
  AddId(kind_, Named("Qa"));
  const auto id = AddId(kind_, Replace(fields, "<IsActive>true<", "<IsActive>false<"));
  EXPECT_EQ(NamesOf({}), (std::vector<std::string>{"Qa"}));
  EXPECT_EQ(NamesOf("<ActiveStatus>InactiveOnly</ActiveStatus>"), (std::vector<std::string>{"Qb"}));
  EXPECT_EQ(NamesOf("<ActiveStatus>All</ActiveStatus>"), (std::vector<std::string>{"Qa", "Qb"}));
  EXPECT_EQ(NamesOf(Id(id)), (std::vector<std::string>{"Qb"}));
}

TEST_P(EveryList, The_filters_of_a_query_choose_and_the_names_are_in_order) {
  machine_.Pass(60);
  for (const char* name : {"Qc", "Qa"}) AddId(kind_, Named(name));
  machine_.Pass(60);
  AddId(kind_, Named("QB"));
  using Names = std::vector<std::string>;
  EXPECT_EQ(NamesOf({}), (Names{"Qa", "QB", "Qc"}));
  EXPECT_EQ(NamesOf("<FromModifiedDate>2008-03-05T10:02:00</FromModifiedDate>"), Names{"QB"});
  EXPECT_EQ(NamesOf("<FromModifiedDate>2008-03-05T10:01:00</FromModifiedDate>"
                    "<ToModifiedDate>2008-03-05T10:01:00</ToModifiedDate>"),
            (Names{"Qa", "Qc"}));
  EXPECT_EQ(NamesOf("<NameRangeFilter><FromName>qb</FromName><ToName>qd</ToName></NameRangeFilter>"),
            (Names{"QB", "Qc"}));
  const auto match = [](const std::string& name) {
    return "<NameFilter><MatchCriterion>StartsWith</MatchCriterion><Name>" + name + "</Name></NameFilter>";
  };
  EXPECT_EQ(NamesOf(match("qA")), Names{"Qa"});
  EXPECT_EQ(QueryOf(kind_, match("xyz")).code, 1);
  const auto two =
      QueryOf(kind_, "<MaxReturned>2</MaxReturned><FromModifiedDate>2008-03-05T10:01:00</FromModifiedDate>");
  EXPECT_EQ(two.All("ListID").size(), 2U);
}

TEST_P(EveryChangeableList, A_change_takes_effect_and_an_old_edit_sequence_does_not) {
  const auto id = AddSample();
  const auto before = QueryOf(kind_, Id(id)).Value("EditSequence");
  const auto mod = [&](const std::string& listId, const std::string& sequence) {
    return Send(ModText(kind_, Id(listId) + "<EditSequence>" + sequence + "</EditSequence>" + sample_.change), tag_);
  };
  EXPECT_EQ(mod("80009999-1", before).code, 3120);
  EXPECT_EQ(mod(AddId("PaymentMethod", "<Name>Other</Name>"), before).code, 3120);
  EXPECT_EQ(mod(id, "1").code, 3200);
  machine_.Pass(5);
  const auto changed = mod(id, before);
  ASSERT_EQ(changed.code, 0) << changed.message;
  EXPECT_EQ(changed.Value("TimeModified"), "2008-03-05T10:00:05-05:00");
  EXPECT_NE(changed.Value("EditSequence"), before);
  EXPECT_EQ(mod(id, before).code, 3200);

  // What the change says is new; all else is as it was added.
  auto expected = sample_.fields;
  if (sample_.change.find("Mod>") == std::string::npos && expected.find("<Phone>1") != std::string::npos) {
    expected = Replace(expected, "<Phone>1<", "<Phone>2<");
  } else if (expected.find("<SalesDesc>s") != std::string::npos) {
    expected = Replace(expected, "<SalesDesc>s<", "<SalesDesc>t<");
  }
  pugi::xml_document given;
  ASSERT_TRUE(given.load_string(expected.c_str(), pugi::parse_default | pugi::parse_fragment));
  const auto after = QueryOf(kind_, Id(id));
  ExpectEchoed(given, after.node.first_child());
}

TEST_P(EveryChangeableList, A_record_takes_a_new_name_that_is_free) {
  const auto id = AddSample();
  AddId(kind_, Named("Taken"));
  const auto named = [&](const std::string& name) {
    return ModifyIn(kind_, id, "<" + sample_.NameElement() + ">" + name + "</" + sample_.NameElement() + ">");
  };
  EXPECT_EQ(named("TAKEN").code, 3100);
  EXPECT_EQ(named("A:B").code, 3090);
  EXPECT_EQ(named("Free").Value("Name"), IsNamedByParts() ? "Free Q. Cho" : "Free");
}

TEST_P(EveryDeletableList, A_record_that_nothing_uses_is_deleted) {
  const auto answer = AddTo(kind_, sample_.fields);
  const auto id = answer.Value("ListID");
  const auto name = answer.Value("Name");
  machine_.Pass(60);
  const auto deleted = Delete(DeletedAs(), id);
  ASSERT_EQ(deleted.code, 0) << deleted.message;
  std::vector<std::string> fields;
  for (const auto field : deleted.node.children())
    fields.push_back(std::string(field.name()) + "=" + field.text().get());
  EXPECT_EQ(fields, (std::vector<std::string>{"ListDelType=" + DeletedAs(), "ListID=" + id,
                                              "TimeDeleted=2008-03-05T10:01:00-05:00", "FullName=" + name}));
  EXPECT_EQ(QueryOf(kind_, Id(id)).code, 500);
  const auto again = Delete(DeletedAs(), id);
  EXPECT_EQ(again.code, 3120);
  EXPECT_EQ(again.severity, "Error");
  EXPECT_NE(AddSample(), id) << "the name is free again, the identifier is not";
}

TEST_P(EveryDeletableList, A_record_above_another_or_under_another_list_s_name_is_not_deleted) {
  const auto id = AddSample();
  EXPECT_EQ(Delete(kind_ == "Vendor" ? "Customer" : "Vendor", id).code, 3120);
  if (HasParents()) {
    const auto below = AddId(kind_, NamedUnder("Below", Id(id)));
    EXPECT_EQ(Delete(DeletedAs(), id).code, 3160);
    EXPECT_EQ(Delete(DeletedAs(), below).code, 0);
  }
  EXPECT_EQ(Delete(DeletedAs(), id).code, 0);
}

std::string NameOfTest(const testing::TestParamInfo<ListSample>& test) {
  return test.param.kind + "_" + std::string(messages::CountryName(test.param.country));
}

bool IsNested(const ListSample& sample) {
  return HasRow(messages::FindMessage(sample.kind + "Add")->request.front().Children(), "ParentRef");
}
bool IsChangeable(const ListSample& sample) { return !sample.change.empty(); }
// No deletion knows the wage items.
bool IsDeletable(const ListSample& sample) { return sample.kind != "PayrollItemWage"; }

std::vector<ListSample> SamplesThat(bool (*holds)(const ListSample&)) {
  auto samples = ListSamples();
  std::erase_if(samples, [holds](const ListSample& sample) { return !holds(sample); });
  return samples;
}

TEST(ListSamples, Cover_every_list_in_every_form_that_has_it) {
  const auto samples = ListSamples();
  for (const auto& kind : ListKinds()) {
    for (const auto country : {Country::US, Country::CA, Country::UK}) {
      const auto* add = messages::FindMessage(std::string(kind.name) + "Add");
      EXPECT_EQ(add == nullptr, kind.name == "Template") << kind.name;
      const bool has = std::ranges::any_of(
          samples, [&](const ListSample& sample) { return sample.kind == kind.name && sample.country == country; });
      EXPECT_EQ(has, add != nullptr && add->KnownIn({.country = country, .version = {3, 0}}))
          << kind.name << " " << messages::CountryName(country);
      const auto* mod = messages::FindMessage(std::string(kind.name) + "Mod");
      for (const auto& sample : samples) {
        if (sample.kind == kind.name) {
          EXPECT_EQ(IsChangeable(sample), mod != nullptr) << kind.name;
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryList, testing::ValuesIn(ListSamples()), NameOfTest);
INSTANTIATE_TEST_SUITE_P(Kinds, EveryNestedList, testing::ValuesIn(SamplesThat(IsNested)), NameOfTest);
INSTANTIATE_TEST_SUITE_P(Kinds, EveryChangeableList, testing::ValuesIn(SamplesThat(IsChangeable)), NameOfTest);
INSTANTIATE_TEST_SUITE_P(Kinds, EveryDeletableList, testing::ValuesIn(SamplesThat(IsDeletable)), NameOfTest);

}  // namespace

}  // namespace twqb::company
