// Every element of every message, broken in every way that there is for one: each is told as QuickBooks tells it, and
// changes nothing. What is right and what is broken is made of the rows of the message table, so a new message is swept
// as soon as it has rows.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "CompanyTest.h"
#include "FileSql.h"
#include "adapters/companyfile/Forms.h"

namespace twqb::company {

namespace {

using messages::Element;
using messages::Form;
using messages::Message;
using messages::Type;

// The rows that lead to an element, steps and choices without an element of their own among them.
using Place = std::vector<const Element*>;

void CollectPlaces(std::span<const Element> rows, const Form& form, const Place& above, std::vector<Place>& places) {
  for (const auto& row : rows) {
    if (!row.KnownIn(form)) continue;
    auto place = above;
    place.push_back(&row);
    if (row.HasChildren()) CollectPlaces(row.Children(), form, place, places);
    if (!row.LeavesNoElement()) places.push_back(std::move(place));
  }
}

std::string RightValue(const Element& row, const Form& form) {
  switch (row.type) {
    case Type::Id:
      return "1A-1204731000";
    case Type::Bool:
      return "true";
    case Type::Int:
      return "5";
    case Type::Amt:
      return "1.00";
    case Type::Price:
    case Type::Quan:
    case Type::Percent:
    case Type::Float:
      return "2.5";
    case Type::Date:
      return "2008-03-05";
    case Type::DateTime:
      return "2008-03-05T10:00:00";
    case Type::TimeInterval:
      return "PT1H30M0S";
    case Type::Guid:
      return "{12345678-1234-1234-1234-123456789012}";
    case Type::Enum:
      for (const auto& value : row.Values()) {
        if (value.KnownIn(form)) return std::string(value.name);
      }
      return {};
    default:
      return "x";
  }
}

// Puts every element that the form knows below `parent`, and of each choice the first branch or the one that leads to
// `place`, and what leads there whether the form knows it or not; answers the element of `place`, whose rows are looked
// at from `depth` on.
pugi::xml_node Fill(pugi::xml_node parent, std::span<const Element> rows, const Form& form, const Place& place,
                    std::size_t depth) {
  pugi::xml_node found;
  for (const auto& row : rows) {
    const bool leads = depth < place.size() && place[depth] == &row;
    if (!leads && !row.KnownIn(form)) continue;
    const auto below = leads ? depth + 1 : place.size();
    pugi::xml_node here;
    if (row.type == Type::Choice) {
      const Element* branch = below < place.size() ? place[below] : nullptr;
      for (const auto& candidate : row.Children()) {
        if (branch == nullptr && candidate.KnownIn(form)) branch = &candidate;
      }
      here = Fill(parent, {branch, 1}, form, place, below);
    } else if (row.type == Type::Step) {
      here = Fill(parent, row.Children(), form, place, below);
    } else {
      auto element = parent.append_child(std::string(row.name).c_str());
      if (row.type == Type::Aggregate) {
        here = Fill(element, row.Children(), form, place, below);
      } else {
        element.text().set(RightValue(row, form).c_str());
      }
      if (leads && below == place.size()) here = element;
    }
    if (leads) found = here;
  }
  return found;
}

constexpr int kDocument = 0;  // in place of a status: the document is refused

struct Break {
  std::string what;
  int status = kDocument;
  void (*apply)(pugi::xml_node element, const Element& row);
};

void SetText(pugi::xml_node element, const std::string& text) { element.text().set(text.c_str()); }

template <const char* kText>
void SetTo(pugi::xml_node element, const Element&) {
  SetText(element, kText);
}
constexpr char kNonsense[] = "no such value";
constexpr char kEmpty[] = "";
constexpr char kOneDecimal[] = "97.5";
constexpr char kSixDecimals[] = "1.234567";
constexpr char kNoDay[] = "2007-02-29";
constexpr char kHalf[] = "1.5";

// What a value of each type is told that is none.
const std::map<Type, int> kTold = {{Type::Id, 3000},           {Type::Bool, 3010},     {Type::Date, 3020},
                                   {Type::DateTime, 3020},     {Type::Amt, 3040},      {Type::Price, 3045},
                                   {Type::TimeInterval, 3035}, {Type::Quan, 3060},     {Type::Percent, 3050},
                                   {Type::Enum, kDocument},    {Type::Int, kDocument}, {Type::Guid, kDocument}};

// Whether an element of the row, put there once more or elsewhere among its siblings, is out of place: not where a
// choice can come again, for that would begin another one.
bool HasOnePlace(const Place& place) {
  for (std::size_t i = place.size() - 1; i-- > 0 && place[i]->LeavesNoElement();) {
    if (place[i]->repeating) return false;
  }
  return true;
}

std::vector<Break> BreaksOf(const Place& place) {
  const auto& row = *place.back();
  std::vector<Break> breaks;
  const auto add = [&](std::string what, int status, void (*apply)(pugi::xml_node, const Element&)) {
    breaks.push_back({std::move(what), status, apply});
  };
  if (const auto told = kTold.find(row.type); told != kTold.end()) {
    add("nonsense", told->second, SetTo<kNonsense>);
    add("empty", told->second, SetTo<kEmpty>);
    if (row.type == Type::Amt) add("one decimal", told->second, SetTo<kOneDecimal>);
    if (row.type == Type::Price || row.type == Type::Quan) add("six decimals", told->second, SetTo<kSixDecimals>);
    if (row.type == Type::Date || row.type == Type::DateTime) add("no day", told->second, SetTo<kNoDay>);
    if (row.type == Type::Int) add("a fraction", told->second, SetTo<kHalf>);
  }
  if (row.type == Type::Str && row.maxLength > 0) {
    add("too long", 3070, [](pugi::xml_node element, const Element& r) {
      SetText(element, std::string(static_cast<std::size_t>(r.maxLength) + 1, 'x'));
    });
  }
  if (row.type == Type::Aggregate) {
    add("text inside", kDocument,
        [](pugi::xml_node element, const Element&) { element.prepend_child(pugi::node_pcdata).set_value("text"); });
  } else {
    add("an element inside", kDocument, [](pugi::xml_node element, const Element&) { element.append_child("Shoe"); });
  }
  add("an unknown name", kDocument, [](pugi::xml_node element, const Element&) { element.set_name("Shoe"); });
  add("an unknown attribute", kDocument,
      [](pugi::xml_node element, const Element&) { element.append_attribute("shoe") = "9"; });
  if (!row.repeating && HasOnePlace(place)) {
    add("twice", kDocument,
        [](pugi::xml_node element, const Element&) { element.parent().insert_copy_after(element, element); });
  }
  const auto* above = place.size() > 1 ? place[place.size() - 2] : nullptr;
  const bool standsAlone = above == nullptr || above->type == Type::Aggregate;
  if (standsAlone && !row.optional) {
    add("missing", 3150, [](pugi::xml_node element, const Element&) { element.parent().remove_child(element); });
  }
  return breaks;
}

// Whether the element went behind its next sibling, where it is out of place.
bool MoveBehindNext(pugi::xml_node element, const Place& place) {
  auto next = element.next_sibling();
  if (!next || std::string_view(next.name()) == element.name() || !HasOnePlace(place)) return false;
  element.parent().insert_move_after(element, next);
  return true;
}

class MessageSweep : public CompanyTest, public testing::WithParamInterface<Form> {
 protected:
  static std::string DocumentOf(const Message& message, pugi::xml_node request, const Form& form = GetParam()) {
    std::ostringstream text;
    request.print(text, "", pugi::format_raw);
    const auto tag = messages::FormTag(form);
    return message.set == messages::MessageSet::Company ? Document(text.str(), tag)
                                                        : SubscriptionDocument(text.str(), tag);
  }

  // The status of the one request, or kDocument.
  int StatusOf(const std::string& document) {
    std::string answer;
    if (const auto raised = NumberRaised([&] { answer = file_->ProcessAny(document); })) {
      EXPECT_EQ(raised, kRefused) << document;
      return kDocument;
    }
    constexpr std::string_view kStatus = "statusCode=\"";
    return std::stoi(answer.substr(answer.find(kStatus) + kStatus.size()));
  }

  // Every row of every table, and the settings of the storage.
  std::string Dump() { return DumpSql(path_); }

  std::size_t broken_ = 0;
};

TEST_P(MessageSweep, Each_way_to_break_an_element_is_told_as_it_is_published_and_changes_nothing) {
  const auto& form = GetParam();
  MakeFile({.accepts = {form.country}});
  const auto before = Dump();
  for (const auto& message : messages::AllMessages()) {
    if (!message.KnownIn(form)) continue;
    std::vector<Place> places;
    CollectPlaces(message.request, form, {}, places);
    for (const auto& place : places) {
      const auto try_ = [&](const std::string& what, int expected, const auto& apply) {
        pugi::xml_document tree;
        auto request = tree.append_child(message.RequestName().c_str());
        const auto element = Fill(request, message.request, form, place, 0);
        ASSERT_TRUE(element) << message.name << " " << place.back()->name;
        if (!apply(element)) return;
        const auto document = DocumentOf(message, request);
        EXPECT_EQ(StatusOf(document), expected) << place.back()->name << ": " << what << "\n" << document;
        ASSERT_EQ(Dump(), before) << place.back()->name << ": " << what << "\n" << document;
        ++broken_;
      };
      for (const auto& way : BreaksOf(place)) {
        try_(way.what, way.status, [&](pugi::xml_node element) {
          way.apply(element, *place.back());
          return true;
        });
      }
      try_("behind its next sibling", kDocument,
           [&](pugi::xml_node element) { return MoveBehindNext(element, place); });
      if (HasFatalFailure()) return;
    }
  }
  EXPECT_GT(broken_, form.country == messages::Country::US ? 3000U : 2500U);
  RecordProperty("broken", static_cast<int>(broken_));
}

// The codes that tell that a request is not as published, whatever the file holds.
const std::set<int> kNotAsPublished = {1030, 1060, 3010, 3020, 3030, 3031, 3035, 3045, 3050, 3060, 3070};

TEST_P(MessageSweep, A_request_with_every_element_of_its_rows_is_as_published) {
  const auto& form = GetParam();
  MakeFile({.accepts = {form.country}});
  for (const auto& message : messages::AllMessages()) {
    if (!message.KnownIn(form)) continue;
    std::vector<Place> places;
    CollectPlaces(message.request, form, {}, places);
    for (const auto& place : places) {
      pugi::xml_document tree;
      auto request = tree.append_child(message.RequestName().c_str());
      static_cast<void>(Fill(request, message.request, form, place, 0));
      const auto document = DocumentOf(message, request);
      std::string answer;
      const auto raised = NumberRaised([&] { answer = file_->ProcessAny(document); });
      // A bill may come to nothing.
      ASSERT_TRUE(raised == 0 || raised == error::kRequestIncomplete) << document;
      if (raised != 0) continue;
      constexpr std::string_view kStatus = "statusCode=\"";
      const auto code = std::stoi(answer.substr(answer.find(kStatus) + kStatus.size()));
      EXPECT_FALSE(kNotAsPublished.contains(code)) << answer << "\n" << document;
    }
  }
}

TEST_P(MessageSweep, An_element_that_another_version_knows_refuses_documents_of_those_that_do_not) {
  const auto country = GetParam().country;
  MakeFile({.country = country, .accepts = {country}});
  const auto before = Dump();
  std::size_t refused = 0;
  for (const auto& message : messages::AllMessages()) {
    for (const auto version : VersionsOf(country)) {
      const Form form = {.country = country, .version = version};
      if (!message.KnownIn(form)) continue;
      for (const auto other : VersionsOf(country)) {
        std::vector<Place> places;
        CollectPlaces(message.request, {.country = country, .version = other}, {}, places);
        for (const auto& place : places) {
          if (std::ranges::all_of(place, [&](const Element* row) { return row->KnownIn(form); })) continue;
          pugi::xml_document tree;
          auto request = tree.append_child(message.RequestName().c_str());
          ASSERT_TRUE(Fill(request, message.request, form, place, 0)) << message.name << " " << place.back()->name;
          const auto document = DocumentOf(message, request, form);
          EXPECT_EQ(StatusOf(document), kDocument) << place.back()->name << "\n" << document;
          ASSERT_EQ(Dump(), before) << document;
          ++refused;
        }
      }
    }
  }
  EXPECT_GT(refused, 200U);
}

INSTANTIATE_TEST_SUITE_P(Forms, MessageSweep,
                         testing::Values(Form{messages::Country::US, {3, 0}}, Form{messages::Country::CA, {3, 0}},
                                         Form{messages::Country::UK, {3, 0}}),
                         [](const auto& test) { return std::string(messages::CountryName(test.param.country)); });

}  // namespace

}  // namespace twqb::company
