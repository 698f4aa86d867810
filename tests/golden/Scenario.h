// A golden scenario: the steps of a run, and the record that must come out of them. Progress and settings are left out
// of it where the scenario does not keep them.
//
// A folder tests/transcripts/TABLE/BEHAVIOUR holds `scenario`, one step a line, and `transcript.jsonl`. Steps:
//   # text                     a remark
//   take FILE                  the steps of a file that stands beside the scenarios of this TABLE, which they share
//   program two-tables         program and objects with a second table of the tests' own (vendors), from here on
//   keep SUBJECTS              the record tells of them from here on: `progress` (what the progress form shows),
//                              `settings` (settings and registry values, read and written), or both
//   init ARGUMENTS             how the files are made; the first step, or left out
//   recovery                   transfers look for lost links and send so that they can be found, from here on; without
//   it
//                              they are run with that off
//   first run                  keeps the question of the first run, which is answered for otherwise
//   clock 2008-03-05T10:00:00  the frozen time of the steps that follow; `daylight` behind it
//   sql STATEMENT              a statement against BillingDb
//   qb REQUESTS                qbXML requests against the company file
//   subscribed                 QuickBooks sends this product events, as it does behind `call SubscribeToQBEvents`
//   answer WORDS               a line of the next transfer's answers file
//   nobody there               the next transfer has no answers file, and asks into the void
//   fault WORDS                a line of the next transfer's faults file
//   send ... , get ...         a transfer, with twqb's own arguments
//   list, accounts, is-job, delete-billing, delete-quickbooks, events ...
//                              another operation, run and recorded like a transfer
//   company NAME VALUE         sets how a connection to the company file is met
//   setting SECTION KEY VALUE  changes a setting; the value goes to the end of the line, blanks included
//   registry SECTION KEY VALUE a registry value of the user
//   copy, move, remove FILE... files of the run's folder
//   folder NAME                makes a folder there, in the way of a file
//   hold MODE                  another program has the company file open, single-user or multi-user, until `let go`
//   object                     a bridge object, for the calls that follow; the first one of a process takes the answers
//                              and faults written so far
//   call OPERATION WORDS...    an operation or property of the last object, or a routine; see LibraryHost.cpp
//   release                    the end of the last object, and with the only one that of the process; those left end
//                              with the scenario
//   before N STEP              a step that is taken when the objects ask their N-th question, before it is answered
//   screen                     what the last transfer printed for the person, for the record; nothing where a host
//                              takes the command line's place
//   files BEGINNING            the names of files of the run's folder, for the record
//   stored SECTION KEY         the value of a setting for the record; null when it is not set
//   show STATEMENT             rows of BillingDb for the record
//   ask REQUESTS               an answer of the company file for the record
// Words with blanks in them stand in double quotes. In answers, faults, settings, registry values and the words of a
// transfer or a call, <folder> stands for the run's folder and
// <FOLDER> for the same in capital letters.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/transport.h"
#include "tests/golden/ScenarioHost.h"

namespace twqb {

struct ScenarioOptions {
  // What makes the hosts of objects; nothing: those inside the test. With it a host takes the command line's place in
  // the steps that are transfers and the like, which then tell no exit status.
  std::function<std::unique_ptr<ScenarioHost>(const HostOptions&)> makeHost = {};
  // Another program of those hosts' system that has the company file open, for as long as what it gives lives; nothing:
  // one here.
  std::function<std::shared_ptr<void>(const HostOptions&, OpenMode)> hold = {};
};

// Runs the scenario of a folder in a temporary folder; the record, one JSON object a line. Throws std::runtime_error
// with the step and its trouble for one that can't be taken, and for a question without an answer, which it names.
[[nodiscard]] std::string RunScenario(const std::string& folder, const ScenarioOptions& options = {});

}  // namespace twqb
