// What the help button of a box shows: a topic of the host's help file.
//
// Of both kinds that there are: compiled HTML (.chm), and the older one (.hlp), which newer Windows does not show by
// itself. Without a viewer nothing happens.
#pragma once

#include <string>

namespace twqb::windows {

void ShowHelpTopic(const std::string& file, int topic);

}  // namespace twqb::windows
