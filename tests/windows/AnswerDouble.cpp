#include "tests/windows/AnswerDouble.h"

#include <string_view>

#include "com/ListObject.h"
#include "quickbooks/ResponseModel.h"
#include "tests/windows/EnvironmentClock.h"
#include "tests/windows/TimeEntryDouble.h"

namespace twqb::doubles {

namespace {

using windows::Variant;

// How its lists are, as the environment has it.
bool ListsAre(std::string_view word) { return FromEnvironment("TWQB_DOUBLE_LISTS") == word; }

std::size_t IndexIn(const Arguments& given) { return static_cast<std::size_t>(given.at(0).Number()); }

// Where the library's own form of a value is not that of the text, the record is a double, too.
IDispatch* RecordOf(const Record& record) {
  return record.GetAsString() == "TimeTrackingRet" ? MakeTimeEntry(record) : com::MakeRecordObject(record);
}

class DetailDouble : public Double<DetailDouble> {
 public:
  explicit DetailDouble(ReturnedList list) : list_(std::move(list)) {}

 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {
        {"count",
         [](const DetailDouble& own, const Arguments&) {
           return Variant(static_cast<long>(own.list_.Count()) - (ListsAre("fewer") ? 1 : 0));
         }},
        {"getat", [](const DetailDouble& own,
                     const Arguments& given) { return ObjectVariant(RecordOf(own.list_.GetAt(IndexIn(given)))); }},
        {"isdouble", [](const DetailDouble&, const Arguments&) { return Variant(true); }}};
    return members;
  }

 private:
  ReturnedList list_;
};

class ResponseDouble : public Double<ResponseDouble> {
 public:
  explicit ResponseDouble(Response response) : response_(std::move(response)) {}

 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {
        {"statuscode", [](const ResponseDouble& own,
                          const Arguments&) { return Variant(static_cast<long>(own.response_.StatusCode())); }},
        {"detail", [](const ResponseDouble& own, const Arguments&) {
           if (ListsAre("fails")) throw PlatformError(0x80004005, "The list is not to be had.");
           auto list = own.response_.DetailList();
           return ObjectVariant(list.IsNothing() ? nullptr : new DetailDouble(std::move(list)));
         }}};
    return members;
  }

 private:
  Response response_;
};

class ResponsesDouble : public Double<ResponsesDouble> {
 public:
  explicit ResponsesDouble(MsgSetResponse responses) : responses_(std::move(responses)) {}

 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {
        {"count", [](const ResponsesDouble& own,
                     const Arguments&) { return Variant(static_cast<long>(own.responses_.Count())); }},
        {"getat", [](const ResponsesDouble& own, const Arguments& given) {
           return ObjectVariant(new ResponseDouble(own.responses_.GetAt(IndexIn(given))));
         }}};
    return members;
  }

 private:
  MsgSetResponse responses_;
};

class AnswerDouble : public Double<AnswerDouble> {
 public:
  AnswerDouble(std::string text, Machine& machine) : text_(std::move(text)), machine_(machine) {}

 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {
        {"toxmlstring", [](const AnswerDouble& own, const Arguments&) { return Variant(std::string_view(own.text_)); }},
        {"responselist", [](const AnswerDouble& own, const Arguments&) {
           auto responses = ObjectVariant(new ResponsesDouble(MsgSetResponse(own.text_, &own.machine_)));
           if (ListsAre("unknown")) responses.Get()->vt = VT_UNKNOWN;
           return responses;
         }}};
    return members;
  }
  [[nodiscard]] bool Knows(const std::string& name) const override {
    return Double::Knows(name) && (!SameName(name, "ResponseList") || !ListsAre("none"));
  }

 public:
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override {
    if (ListsAre("gone") && SameName(windows::Utf8(names[0]), "ResponseList")) return RPC_E_DISCONNECTED;
    return Double::GetIDsOfNames(reserved, names, count, locale, ids);
  }

 private:
  std::string text_;
  Machine& machine_;
};

}  // namespace

IDispatch* MakeAnswer(std::string text, Machine& machine) { return new AnswerDouble(std::move(text), machine); }

}  // namespace twqb::doubles
