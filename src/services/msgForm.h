// The progress form: what is being done, how far it is, the time left, and a Cancel button.
//
// The form's state is a module variable; the desk shows it. One instance, made on first reference and forgotten after
// unloading. Routines that must stay invisible under `NoProgressBar` test the property themselves.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace twqb {

// Loads the form if it is not, shows `strText` as the action, sets the bar to 0, pumps messages. The start time is that
// of the load: a form that is shown anew keeps it.
void ShowMsgForm(std::string_view strText);

// Bar, position and estimate of the time left. Nothing happens when `lngCurrent` is above `lngTotal`, and nothing but a
// refresh when `lngTotal` is 0. Ignores errors.
void UpdateProgressBar(std::int64_t lngTotal, std::int64_t lngCurrent);

// The running text (the record in hand). Nothing happens while no form is loaded.
void SetProgressText(std::string_view strText);

// The window's title; " Tallywick" until it is set.
[[nodiscard]] std::string MyCaption();
void SetMyCaption(std::string_view strCaption);

// Takes the form down and forgets it; nothing happens when none is loaded.
void UnloadMsgForm();

}  // namespace twqb
