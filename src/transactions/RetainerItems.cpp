#include "transactions/RetainerItems.h"

#include <fmt/format.h>

#include <string_view>

#include "engine/LostAdditions.h"
#include "engine/Mapping.h"
#include "engine/StatusRules.h"
#include "messages/StatusCodes.h"
#include "platform/Decimal.h"
#include "platform/Text.h"
#include "quickbooks/Requests.h"
#include "services/Countries.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/WaitPointer.h"
#include "transactions/InvoiceLines.h"
#include "transactions/SpecialItems.h"
#include "transactions/modPayments.h"

namespace twqb {

namespace {

constexpr int kOtherCurrentLiability = 13;  // of AccountType

// The answer to a set of one request.
template <typename Fill>
Response Ask(QBSessionManager& session, std::string_view request, Fill fill) {
  auto messageSet = RequireMsgSetRequest(session);
  fill(messageSet.Append(request));
  return session.DoRequests(messageSet).GetAt(0);
}

std::string PrefixOf(std::string_view routine) { return fmt::format("\"{}()\" : ", routine); }

// Adds one thing: `fill` says what it is. `there` is the status of one that is there already.
template <typename Fill>
bool Secure(QBSessionManager& session, std::string_view routine, std::string_view addRequest, std::int32_t there,
            Fill fill) {
  return WithWaitPointer([&] {
    return RunAs(routine, false, [&] {
      const auto response = Ask(session, addRequest, fill);
      if (const auto code = response.StatusCode(); code == status::kOk || code == there) return true;
      ShowQBError(response, PrefixOf(routine));
      return false;
    });
  });
}

// The day alone. A British retainer of long ago is booked in 1901.
Date BookingDate(Date date) {
  constexpr int kLongAgo = 1990;
  constexpr int kBookedIn = 1901;
  const auto civil = date.ToCivil();
  if (FileCountry() != "UK" || civil.year >= kLongAgo) return date.Midnight();
  return TextToDate(fmt::format("{}/{}/{}", civil.month, civil.day, kBookedIn));
}

std::string FittingReference(std::string_view reference, const RequestField& field) {
  const bool fits = Left(reference, static_cast<std::size_t>(field.GetMaxLength())) == reference;
  return fits ? std::string(reference) : ReplaceAll(reference, " ", "");
}

}  // namespace

bool AddRetainerItems(QBSessionManager& session) {
  return AddAccount(session) && AddPaymentItem(session) && AddItemOtherCharge(session);
}

bool AddAccount(QBSessionManager& session) {
  return Secure(session, "AddAccount", "AccountAddRq", status::kNameInUse, [](const RequestField& account) {
    account["Name"].SetValue(kRetainerAccount);
    account["AccountType"].SetValue(kOtherCurrentLiability);
    account["Desc"].SetValue("TWAppliedRetainerAcct");
    account["IsActive"].SetValue(true);
    account["OpenBalance"].SetValue(0.0);
  });
}

bool AddPaymentItem(QBSessionManager& session) {
  // QuickBooks answers a second payment item of the name with another status than its neighbours.
  return Secure(session, "AddPaymentItem", "ItemPaymentAddRq", status::kCannotSave, [](const RequestField& item) {
    const bool cheque = IsCanadianOrBritish(FileCountry()) || IsCanadianOrBritish(Vars().g_HostCountry);
    item["Name"].SetValue(kRetainerPayment);
    item["IsActive"].SetValue(true);
    item["ItemDesc"].SetValue("TW Applied Retainer");
    item["PaymentMethodRef"]["FullName"].SetValue(cheque ? "Cheque" : "Check");
  });
}

bool AddItemOtherCharge(QBSessionManager& session) {
  return Secure(session, "AddItemOtherCharge", "ItemOtherChargeAddRq", status::kNameInUse,
                [](const RequestField& item) {
                  if (FileCountry() == "US") {
                    item["SalesTaxCodeRef"]["FullName"].SetValue("NON");
                  } else if (Vars().g_QBMajorVer >= 3) {
                    // The earlier forms have no place for it.
                    item["TaxCodeForSaleRef"]["FullName"].SetValue("E");
                  }
                  item["Name"].SetValue(kRetainerCharge);
                  item["IsActive"].SetValue(true);
                  const auto both = FieldAtPath(item, "ORSalesPurchase.SalesAndPurchase");
                  both["PurchaseDesc"].SetValue("Tallywick Retainer Charge Item");
                  both["SalesDesc"].SetValue("Tallywick Retainer Charge Item");
                  both["PurchaseCost"].SetValue(0.0);
                  both["SalesPrice"].SetValue(0.0);
                  both["ExpenseAccountRef"]["FullName"].SetValue(kRetainerAccount);
                  both["IncomeAccountRef"]["FullName"].SetValue(kRetainerAccount);
                });
}

void AssignRetainerHeader(const RequestField& invoice, const Retainer& retainer) {
  invoice["CustomerRef"]["ListID"].SetValue(retainer.CustomerListID);
  invoice["IsPending"].SetValue(false);
  invoice["TxnDate"].SetValue(BookingDate(retainer.TxnDate));
  const auto reference = invoice["RefNumber"];
  SetCut(reference, FittingReference(retainer.RefNumber, reference));
}

std::optional<std::string> AddRetainerPayment(QBSessionManager& session, const Retainer& retainer) {
  return WithWaitPointer([&] {
    return RunAs("AddRetainerPayment()", std::optional(std::string()), [&]() -> std::optional<std::string> {
      auto messageSet = RequireMsgSetRequest(session);
      const auto invoice = AppendAddition(messageSet, kRetainerRequest, kPaymentsTable, retainer.PayID);
      AssignRetainerHeader(invoice, retainer);
      // QuickBooks takes a payment item off by its nature, so the invoice comes to nothing.
      for (const auto item : {kRetainerCharge, kRetainerPayment}) {
        const auto line = invoice["ORInvoiceLineAddList"].Append()["InvoiceLineAdd"];
        line["ItemRef"]["FullName"].SetValue(item);
        AssignMoney(line, Decimal::FromCurrency(retainer.Amount).ToCents());
      }
      const auto answer = SendAddition(kPaymentsTable, retainer.PayID, session, messageSet);
      if (!answer) return std::nullopt;
      const auto& response = answer->GetAt(0);
      if (response.StatusCode() == status::kOk) return response.Detail()["TxnID"].GetValue();
      NoteRefused(response);
      ShowRefusal(response, PrefixOf("AddRetainerPayment"));
      return std::string();
    });
  });
}

}  // namespace twqb
