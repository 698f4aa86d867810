#include "quickbooks/RequestWriter.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "messages/ValueFormat.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb::detail {

namespace {

using messages::Element;
using messages::Form;
using messages::Type;

enum class Written : std::uint8_t {
  AsIs,
  Escaped,
  Unknown,  // what it is a part of decides whether XML can carry it
};

struct Escape {
  char character;
  std::string_view written;
};
constexpr std::array kEscapes = {Escape{'&', "&amp;"}, Escape{'<', "&lt;"}, Escape{'>', "&gt;"}, Escape{'"', "&quot;"},
                                 Escape{'\r', "&#13;"}};

constexpr std::size_t PlaceOf(char c) { return static_cast<unsigned char>(c); }

constexpr auto kWritten = [] {
  constexpr std::size_t kFirstBeyondAscii = 0x80;
  std::array<Written, 256> written{};
  for (std::size_t byte = 0; byte < written.size(); ++byte) {
    if (byte < ' ' || byte >= kFirstBeyondAscii) written[byte] = Written::Unknown;
  }
  written['\t'] = written['\n'] = Written::AsIs;
  for (const auto& escape : kEscapes) written[PlaceOf(escape.character)] = Written::Escaped;
  return written;
}();

Written HowWritten(char c) { return kWritten[PlaceOf(c)]; }

class Writer {
 public:
  Writer(const Form& form, std::string& out, bool* mended) : form_(form), out_(out), mended_(mended) {}

  void WriteChildren(const RequestNode& node) {
    const auto rows = node.Rows();
    if (rows.HasRequiredChoice()) return WriteRows(rows, node.FirstChild());
    for (const auto* child = node.FirstChild(); child != nullptr; child = child->Next()) {
      if (child->Row()->KnownIn(form_)) WriteIfFilled(*child);
    }
  }

 private:
  void WriteRows(const messages::Rows& rows, const RequestNode* child) {
    for (const auto& row : rows) {
      bool any = false;
      const bool isKnown = row.KnownIn(form_);
      for (; child != nullptr && child->Row() == &row; child = child->Next()) {
        if (isKnown && WriteIfFilled(*child)) any = true;
      }
      if (isKnown && !any && row.type == Type::Choice && !row.optional) {
        throw PlatformError(error::kRequestIncomplete,
                            fmt::format("{} ({})", ErrorText(error::kRequestIncomplete), row.name));
      }
    }
  }

  // True when it was.
  bool WriteIfFilled(const RequestNode& node) {
    if (!node.IsFilled() || !IsValueKnown(node)) return false;
    WriteNode(node);
    return true;
  }

  // Of an enumeration the form may have the field, but not the value.
  [[nodiscard]] bool IsValueKnown(const RequestNode& node) const {
    return node.Row()->type != Type::Enum || messages::IsWellFormed(*node.Row(), node.Value(), form_);
  }

  void WriteNode(const RequestNode& node) {
    const auto& row = *node.Row();
    if (row.LeavesNoElement()) return WriteChildren(node);
    (out_ += '<').append(row.name) += '>';
    if (row.type == Type::Aggregate) {
      WriteChildren(node);
    } else {
      WriteValue(node.Value());
    }
    out_.append("</").append(row.name) += '>';
  }

  void WriteValue(std::string_view value) {
    if (std::ranges::all_of(value, [](char c) { return HowWritten(c) == Written::AsIs; })) {
      out_.append(value);
    } else if (IsXmlText(value)) {
      AppendEscaped(out_, value);
    } else {
      AppendEscaped(out_, XmlText(value));
      if (mended_ != nullptr) *mended_ = true;
    }
  }

  const Form& form_;
  std::string& out_;
  bool* mended_;
};

}  // namespace

void AppendEscaped(std::string& out, std::string_view text) {
  while (!text.empty()) {
    const auto at = std::ranges::find(text, Written::Escaped, HowWritten);
    out.append(text.begin(), at);
    if (at == text.end()) return;
    out.append(std::ranges::find(kEscapes, *at, &Escape::character)->written);
    text = {at + 1, text.end()};
  }
}

void WriteRequest(const RequestNode& request, const Form& form, std::string& out, bool* mended) {
  Writer(form, out, mended).WriteChildren(request);
}

}  // namespace twqb::detail
