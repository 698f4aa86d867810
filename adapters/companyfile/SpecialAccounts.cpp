#include "adapters/companyfile/SpecialAccounts.h"

#include <fmt/core.h>

#include <optional>
#include <string>

#include "adapters/companyfile/XmlText.h"

namespace twqb::company {

namespace {

const ListKind& Accounts() { return *FindListKind("Account"); }

std::optional<ListRecord> FindStandIn(CompanyStore& store, const SpecialAccount& account) {
  auto named = store.FindByFullKey(Accounts(), FullNameKey(account.name));
  if (named && named->type == account.type) return named;
  return account.standIn == StandIn::OfType ? store.FindFirstOfType(Accounts(), account.type) : std::nullopt;
}

std::string FreeName(CompanyStore& store, std::string_view name) {
  std::string free(name);
  for (int number = 2; store.KindUsingName(Accounts(), {}, NameKey(free), {}); ++number) {
    free = fmt::format("{} {}", name, number);
  }
  return free;
}

ListRecord Make(CompanyStore& store, const SpecialAccount& account, std::int64_t now) {
  ListRecord record;
  record.name = record.fullName = FreeName(store, account.name);
  record.fullKey = FullNameKey(record.name);
  record.created = record.modified = record.editSequence = now;
  record.type = account.type;
  AppendLeaf(record.body, "AccountType", account.type);
  AppendLeaf(record.body, "SpecialAccountType", account.special);
  record.listId = store.NewListId(now);
  store.Insert(Accounts(), record);
  return record;
}

}  // namespace

ListRecord FindOrMakeSpecialAccount(CompanyStore& store, const SpecialAccount& account, std::int64_t now) {
  const auto key = fmt::format("account {}", account.special);
  if (const auto listId = store.ReadSetting(key)) {
    if (auto record = store.FindById(Accounts(), *listId)) return *record;
  }
  auto record = FindStandIn(store, account);
  if (!record) record = Make(store, account, now);
  store.WriteSetting(key, record->listId);
  return *record;
}

}  // namespace twqb::company
