#include "services/Settings.h"

#include <fmt/core.h>

#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Sql.h"

namespace twqb {

namespace {

constexpr int kProfileBuffer = 255;  // characters, the closing NUL included

// Section and key are not protected against quotes, on purpose: the host's keys are its own, and rows written by older
// versions must be met again.
std::string ParamName(std::string_view section, std::string_view key) { return fmt::format("{}_{}", section, key); }

std::unique_ptr<ado::Recordset> OpenReadOnly(const Sql& statement) {
  return GlobalConnection().OpenRecordset(statement, ado::CursorType::Static, ado::LockType::ReadOnly);
}

std::string ReadFromTable(std::string_view section, std::string_view key, std::string_view fallback) {
  const auto read = [&] {
    const auto rs =
        OpenReadOnly(Sql("SELECT ParamValue FROM TWSTable WHERE ParamName = '{}'", ParamName(section, key)));
    const auto value = rs->Eof() ? std::string() : Trim(ToText(rs->FieldAt(0)));
    rs->Close();
    return value.empty() ? std::string(fallback) : value;
  };
  // Inside a transfer the connection is open already and its count is left alone.
  return Vars().g_CnRefCount < 1 ? WithGlobalConnection(read) : read();
}

Sql WriteStatement(bool exists, std::string_view name, std::string_view value) {
  const Doubled quoted{FixQuote(value)};
  if (exists) {
    return value.empty() ? Sql("UPDATE TWSTable SET ParamValue = NULL WHERE ParamName = '{}';", name)
                         : Sql("UPDATE TWSTable SET ParamValue ='{}' WHERE ParamName = '{}';", quoted, name);
  }
  return value.empty() ? Sql("INSERT INTO TWSTable (ParamValue ,ParamName) VALUES (NULL, '{}');", name)
                       : Sql("INSERT INTO TWSTable (ParamValue ,ParamName) VALUES ('{}','{}');", quoted, name);
}

void WriteToTable(std::string_view section, std::string_view key, std::string_view value) {
  WithGlobalConnection([&] {
    const auto name = ParamName(section, key);
    const auto rs = OpenReadOnly(Sql("SELECT ParamValue FROM TWSTable WHERE ParamName = '{}';", name));
    GlobalConnection().Execute(WriteStatement(!rs->Eof(), name, value), nullptr);
    rs->Close();
  });
}

}  // namespace

std::string gf_ReadSettings(std::string_view strSection, std::string_view strKey, std::string_view strPath,
                            std::string_view strDefault) {
  if (Vars().g_UseTWSTable) return ReadFromTable(strSection, strKey, strDefault);
  return TheMachine().GetPrivateProfileString(strSection, strKey, strDefault, kProfileBuffer, strPath);
}

bool gf_WriteSettings(std::string_view strSection, std::string_view strKey, std::string_view strValue,
                      std::string_view strPath) {
  return RunAs("gf_WriteSettings", [&] {
    if (Vars().g_UseTWSTable) {
      WriteToTable(strSection, strKey, strValue);
    } else {
      TheMachine().WritePrivateProfileString(strSection, strKey, strValue, strPath);
    }
  });
}

std::string RegGetSetting(std::string_view strApplication, std::string_view strSection, std::string_view strKey,
                          std::string_view strDefault) {
  const auto key = fmt::format("SOFTWARE\\OFS\\{}\\{}", strApplication, Trim(strSection));
  const auto value = TheMachine().ReadRegistry(key, Trim(strKey));
  // What does not fit the buffer, with the zero behind it, can't be read.
  if (!value || CharacterCount(*value) >= kProfileBuffer) return std::string(strDefault);
  return Trim(std::string_view(*value).substr(0, value->find('\0')));
}

void LoadActivityCodes() {
  struct Code {
    std::string ModuleVariables::*variable;
    std::string_view builtIn;
    std::string_view name;
  };
  static constexpr Code kCodes[] = {
      {&ModuleVariables::g_ActivityComp, "GEN:COMP", "ACTIVITY_COMP"},
      {&ModuleVariables::g_ActivityHol, "GEN:HOL", "ACTIVITY_HOL"},
      {&ModuleVariables::g_ActivitySick, "GEN:SICK", "ACTIVITY_SICK"},
      {&ModuleVariables::g_ActivityVac, "GEN:VAC", "ACTIVITY_VAC"},
  };
  for (const auto& code : kCodes) Vars().*code.variable = code.builtIn;
  WithGlobalConnection([] {
    for (const auto& code : kCodes) {
      const auto value = GetScalarFromSQL(Sql("SELECT ParamValue FROM TWSTable WHERE ParamName = '{}'", code.name));
      if (!value.empty()) Vars().*code.variable = value;
    }
  });
}

}  // namespace twqb
