// The lines of a transaction that is being added: read from the request, completed from their items, and summed up.
//
// Lines that are applications to other transactions are not read here; see TxnSettlement.h.
#pragma once

#include <functional>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "adapters/companyfile/TxnAmounts.h"
#include "adapters/companyfile/TxnRequests.h"

namespace twqb::company {

// Whether a tax code makes what carries it, a `referrer`, taxable; without one it is not. Throws Refused for a code
// that is not there.
[[nodiscard]] bool IsTaxable(CompanyStore& store, pugi::xml_node taxCodeRef, std::string_view referrer);
// Sets the text of the element of that name in `parent`; the element is made where it is missing.
void SetLeaf(pugi::xml_node parent, const char* name, const std::string& text);
// Makes a reference of that name in `parent`, in place of one that is there.
void SetReference(pugi::xml_node parent, const char* name, std::string_view listId);
// The element of an amount in a request; nothing where it is missing. Throws Refused for a number that is too great.
[[nodiscard]] std::optional<Decimal> ReadDecimal(pugi::xml_node parent, const char* name);
// The form that a line is answered in: "InvoiceLineRet".
[[nodiscard]] std::string AnswerName(const TxnLineKind& line);

class TxnLines {
 public:
  // `record` is the row of the answered record. What is given must outlive the object.
  TxnLines(const TxnContext& context, const messages::Element& record)
      : context_(context), record_(record), root_(document_.append_child("Lines")) {}

  // Reads every line in `fields`, the element of the request. Throws Refused. To be called once.
  void Read(pugi::xml_node fields);

  [[nodiscard]] bool Empty() const { return !root_.first_child(); }
  [[nodiscard]] Currency Subtotal() const { return subtotal_; }
  [[nodiscard]] Currency Taxable() const { return taxable_; }  // the part of it that tax is on
  // False where what QuickBooks makes of an item is not known here, which can only be of one that was told (ToldKinds):
  // the sign of a discount, the price of a fixed asset. Subtotals are left to count for nothing.
  [[nodiscard]] bool AreKnown() const { return areKnown_; }
  // The same of what is taxable of them.
  [[nodiscard]] bool IsTaxKnown() const { return isTaxKnown_; }
  // The lines as they are stored, but for the identifiers; throws Refused for a reference that names nothing.
  [[nodiscard]] std::string Store() const;
  // Gives each line in a text that Store made an identifier.
  static void Number(std::string& lines, const std::function<std::string()>& newId);

 private:
  struct Item;

  void ReadItemLine(pugi::xml_node given, const TxnLineKind& kind);
  void ReadGroupLine(pugi::xml_node given, const TxnLineKind& kind);
  void ReadAccountLine(pugi::xml_node given, const TxnLineKind& kind);
  // Puts a copy of `given`, without what the answer has not, below `parent`.
  pugi::xml_node Copy(pugi::xml_node parent, pugi::xml_node given, const messages::Element& row,
                      std::string_view referrer);
  // Completes a copied item line, a `referrer`, from its item, adds it to the sums and answers its amount.
  Currency Complete(pugi::xml_node line, const messages::Element& row, const std::optional<Item>& item,
                    std::string_view referrer);
  [[nodiscard]] std::optional<Item> ReadItem(pugi::xml_node itemRef, std::string_view referrer);
  // What is otherwise with an item of a told kind.
  static void TakeTold(std::string_view kind, Item& item);
  [[nodiscard]] const messages::Element& RowOf(const TxnLineKind& kind) const;
  static void CheckBillable(pugi::xml_node line, std::string_view referrer);

  const TxnContext& context_;
  const messages::Element& record_;
  pugi::xml_document document_;
  pugi::xml_node root_;
  Currency subtotal_;
  Currency taxable_;
  bool areKnown_ = true;
  bool isTaxKnown_ = true;
  Currency previous_;  // the amount of the line before, which a percentage is of
};

}  // namespace twqb::company
