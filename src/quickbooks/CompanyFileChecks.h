// Around the company file: the retry loop after a failed first BeginSession, and the checks once a session stands.
// Both run inside StartQBSession.
#pragma once

#include <string>
#include <string_view>

#include "platform/transport.h"

namespace twqb {

// Tells each failure in its own words and lets the user retry or pick a file. The result of the file checks once a
// session stands; False, with no session left, when the user gave up.
bool RetryBeginSession(OpenMode mode);

// Remembers the file, warns when it is not the one of last time, offers a backup on the first run. False, with no
// session left, when the user said No to the warning. Errors go to the caller.
bool CheckCompanyFile();

// For as long as one lives, a session that stands leaves no trace: no file is remembered, and the backup of the first
// run is left for a run that transfers. That another file is open than the last time is asked all the same.
class SessionWithoutTrace {
 public:
  SessionWithoutTrace();
  ~SessionWithoutTrace();
  SessionWithoutTrace(const SessionWithoutTrace&) = delete;
  SessionWithoutTrace& operator=(const SessionWithoutTrace&) = delete;
};

// The system's open-file dialog for company files; the path chosen, or "".
[[nodiscard]] std::string gf_OpenFile(std::string_view strInitialFolder);

}  // namespace twqb
