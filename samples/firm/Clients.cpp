// Clients and their projects.
#include <fmt/format.h>

#include <array>

#include "platform/Text.h"
#include "samples/firm/Parts.h"
#include "samples/firm/Shapes.h"

namespace twqb::firm {

namespace {

constexpr std::size_t kLongestKey = 36;

void AddProject(Dice& dice, const Model& model, const Job& job, Rows& rows) {
  const bool isPhase = !job.parent.empty();
  const auto place = Place(dice);
  Text name = AnyText(dice, isPhase ? fmt::format("{} {}", place, job.phase) : place, 100);
  // Names that begin with their key, and names with colons, which QuickBooks keeps for its own.
  if (dice.OnceIn(8)) name = fmt::format("{}-{} {}", job.code, job.phase, place);
  if (dice.OnceIn(8)) name = fmt::format("{}: west", place);
  // A key that fills QuickBooks' name by itself is left out of it, so that there must be a name, with room for a
  // counter.
  if (CharacterCount(job.key) > kLongestKey) name = dice.OnceIn(2) ? "Gauges" : SomeText(dice, place, kLongestKey);
  const bool works = job.months > 0;
  constexpr std::array kIdle = {"Inactive", "Completed", "Hold", "Main"};
  Row row;
  row.Put("ProjectID", job.key).Put("ProjectCode", job.code).Put("ProjectPhase", job.phase);
  row.Put("ProjectName", name).Put("ClientID", model.clients[job.client].key);
  row.Put("EmployeeID", dice.OnceIn(10) ? Text() : dice.OneOf(model.employees).key);
  row.Flag("ProjectIsPhase", isPhase).Put("ParentProjectID", isPhase ? Text(job.parent) : Text());
  row.Put("PhaseDescription", isPhase ? AnyText(dice, "Phase of " + job.parent, 120) : Text());
  row.Put("ProjectConType", job.contract);
  row.Put("ProjectStatus", works ? (dice.OnceIn(9) ? Text() : Text("Active")) : Text(dice.OneOf(kIdle)));
  row.Moment("ProjectStartDate", dice.OnceIn(8) ? std::optional<Date>() : DayOf(job.firstMonth, -dice.Of(0, 90)));
  row.Put("ProjectStreet", AnyText(dice, Street(dice), 60)).Put("ProjectStreet2", AnyText(dice, "c/o the mason", 60));
  row.Put("ProjectCity", AnyText(dice, City(dice), 35)).Put("ProjectState", State(dice));
  row.Put("ProjectZip", AnyText(dice, PostalCode(dice), 15)).Put("ProjectMemo", AnyMemo(dice, Task(dice)));
  row.Moment("LastUpdated", AnyMoment(dice));
  rows.Add("Project", row);
  if (dice.OnceIn(5)) rows.Add("ProjectGroupDetail", Row().Put("PGID", "WATER").Put("ProjectID", job.key));
}

}  // namespace

void AddClients(const Model& model, Rows& rows) {
  auto dice = DiceFor(model.plan, Purpose::Clients);
  for (const auto& client : model.clients) {
    Row row;
    row.Put("ClientID", client.key).Put("ClientCompany", client.company);
    row.Put("ClientFName", AnyText(dice, FirstName(dice), 30)).Put("ClientLName", AnyText(dice, LastName(dice), 30));
    row.Put("ClientMI", dice.OnceIn(3) ? Text("J") : Text()).Put("ClientMainSalt", Salutation(dice));
    row.Put("ClientStreet", AnyText(dice, Street(dice), 60)).Put("ClientStreet2", AnyText(dice, "3rd Floor", 60));
    row.Put("ClientCity", AnyText(dice, City(dice), 35)).Put("ClientState", State(dice));
    row.Put("ClientZip", AnyText(dice, PostalCode(dice), 15));
    row.Put("ClientPhone", Phone(dice)).Put("ClientMainPhone", Phone(dice)).Put("ClientFax", Phone(dice));
    row.Put("ClientEmail", AnyText(dice, "office@client.example", 99));
    row.Moment("ClientSince", dice.OnceIn(6) ? std::optional<Date>() : DayOf(0, dice.Of(-2000, 100)));
    row.Put("Status", dice.OnceIn(12) ? Text("InActive") : dice.OnceIn(5) ? Text() : Text("Active"));
    row.Moment("LastUpdated", AnyMoment(dice));
    rows.Add("Client", row);
    if (dice.OnceIn(4)) rows.Add("ClientGroupDetail", Row().Put("CGID", "TOWNS").Put("ClientID", client.key));
  }
}

void AddProjects(const Model& model, Rows& rows) {
  auto dice = DiceFor(model.plan, Purpose::Projects);
  for (const auto& job : model.jobs) AddProject(dice, model, job, rows);
}

}  // namespace twqb::firm
