#include "adapters/companyfile/MessageSetStore.h"

namespace twqb::company {

std::optional<StoredSet> MessageSetStore::Find(std::string_view id) {
  auto rows = database_.Query("SELECT checksum, answered, answer FROM message_set WHERE application = ? AND id = ?",
                              {std::string_view(application_), id});
  if (!rows.Next()) return std::nullopt;
  StoredSet set{.checksum = rows.Text(0), .answer = {}};
  if (rows.Integer(1) != 0) set.answer = rows.Text(2);
  return set;
}

void MessageSetStore::Put(std::string_view id, const StoredSet& set, std::int64_t now) {
  database_.Execute(
      "INSERT INTO message_set VALUES (?, ?, ?, ?, ?, ?)",
      {std::string_view(application_), id, std::string_view(set.checksum), std::int64_t{set.answer.has_value()},
       set.answer ? std::string_view(*set.answer) : std::string_view{}, now});
}

void MessageSetStore::Remove(std::string_view id) {
  database_.Execute("DELETE FROM message_set WHERE application = ? AND id = ?", {std::string_view(application_), id});
}

void MessageSetStore::Clear() {
  database_.Execute("DELETE FROM message_set WHERE application = ?", {std::string_view(application_)});
}

}  // namespace twqb::company
