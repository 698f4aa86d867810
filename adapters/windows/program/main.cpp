// The program twqb on Windows: arguments come as UTF-16 and go on as UTF-8, and streams carry bytes as they are
// written.

#include <fcntl.h>
#include <io.h>
#include <objbase.h>
#include <windows.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "cli/Program.h"

namespace {

std::string Utf8(const wchar_t* text) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), size, nullptr, nullptr);
  bytes.pop_back();
  return bytes;
}

}  // namespace

int wmain(int count, wchar_t** given) {
  for (const int stream : std::array{0, 1, 2}) _setmode(stream, _O_BINARY);
  // Into a file, too: what boxes say goes there by another road, and is to stand behind what was told before it.
  std::setvbuf(stderr, nullptr, _IONBF, 0);
  SetConsoleOutputCP(CP_UTF8);
  SetConsoleCP(CP_UTF8);
  // What --quickbooks and ADO stand on lives in this thread's apartment.
  const auto apartment = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  std::vector<std::string> texts;
  for (int i = 0; i < count; ++i) texts.push_back(Utf8(given[i]));
  std::vector<const char*> arguments;
  for (const auto& text : texts) arguments.push_back(text.c_str());
  arguments.push_back(nullptr);
  const int status = twqb::cli::RunProgram(count, arguments.data());
  if (SUCCEEDED(apartment)) CoUninitialize();
  return status;
}
