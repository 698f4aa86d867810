// A house in which the project routines are called as the dispatcher calls them, with one client in QuickBooks.
#pragma once

#include "lists/modProjects.h"
#include "services/Database.h"
#include "tests/lists/ListHouse.h"

namespace twqb {

inline constexpr TestedTable kProjectTable = {.table = enProjects,
                                              .name = "Project",
                                              .keyColumn = "ProjectID",
                                              .toQB = MoveProjectsToQB,
                                              .toTW = MoveProjectsToTW};

class ProjectsHouse : public ListHouse {
 public:
  explicit ProjectsHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : ListHouse(kProjectTable, std::move(options), faults, country), client(AddCustomer("<Name>Acme</Name>", Tag())) {
    Sql("INSERT INTO Client (ClientID, QBLinkID) VALUES ('ACME', '" + client + "')");
    // The dispatcher holds the shared connection as long as a table runs.
    gp_cnGlobal80(true);
    own_ = Vars().platform.database->CreateConnection();
    OpenConnection(*own_, nullptr, "");
  }

  // Columns beside key and client, as "ProjectCode, ..." and their SQL expressions.
  void Project(std::string_view key, std::string_view columns = {}, std::string_view values = {}) {
    Row("ProjectID, ClientID" + (columns.empty() ? std::string() : ", " + std::string(columns)),
        "'" + std::string(key) + "', 'ACME'" + (values.empty() ? std::string() : ", " + std::string(values)));
  }
  // A job with its fields behind the reference to what it stands under; its ListID.
  std::string Job(std::string_view name, std::string_view parent, std::string_view fields = {}) {
    return AddCustomer("<Name>" + std::string(name) + "</Name>" + std::string(before_) + "<ParentRef><ListID>" +
                           std::string(parent) + "</ListID></ParentRef>" + std::string(fields),
                       Tag());
  }
  std::string InactiveJob(std::string_view name, std::string_view parent, std::string_view fields = {}) {
    before_ = "<IsActive>false</IsActive>";
    const auto id = Job(name, parent, fields);
    before_ = {};
    return id;
  }
  // The pull of one record, as another table's get asks for it.
  void Pull(const std::string& listId) {
    Take(Read({.strID = listId, .IsDependent = true}), Dependent::Yes, own_.get());
  }
  // The one record of that identifier.
  [[nodiscard]] Record RecordOf(const std::string& listId) {
    return Read({.strID = listId, .IsDependent = true}).At(0);
  }
  [[nodiscard]] ado::Connection& Own() { return *own_; }

  std::string client;  // its ListID

 private:
  std::unique_ptr<ado::Connection> own_;
  std::string_view before_;
};

}  // namespace twqb
