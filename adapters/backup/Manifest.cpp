#include "adapters/backup/Manifest.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <nlohmann/json.hpp>

namespace twqb::backup {

namespace fs = std::filesystem;

namespace {

using Json = nlohmann::ordered_json;

// A manifest of another format is none that this program can put back.
constexpr int kFormat = 1;

struct PartNames {
  std::string_view name;
  std::string_view called;
};
// In the order of Part.
constexpr std::array<PartNames, 4> kParts = {{{.name = "billing", .called = "BillingDb"},
                                              {.name = "company", .called = "the company file"},
                                              {.name = "settings", .called = "the settings file"},
                                              {.name = "registry", .called = "the registry file"}}};

constexpr std::array<std::string_view, 4> kMadeBy = {"hand", "transfer", "restore", "undo"};  // in the order of MadeBy

Json ToJson(const std::vector<KeptFile>& files, const std::string& folder) {
  auto all = Json::array();
  for (const auto& file : files) {
    Json entry = {{"part", NameOf(file.part)}, {"name", PathFrom(file.path, folder)}, {"there", file.isThere}};
    if (file.isThere) {
      entry["size"] = file.content.size;
      entry["sha256"] = file.content.Digest();
      entry["pieces"] = file.content.pieces;
    }
    if (!file.identity.empty()) entry["identity"] = file.identity;
    all.push_back(std::move(entry));
  }
  return all;
}

std::vector<KeptFile> FilesFrom(const Json& all, const std::string& folder) {
  std::vector<KeptFile> files;
  for (const auto& entry : all) {
    KeptFile file{.part = PartFrom(entry.at("part").get<std::string>()).value(),
                  .path = PathIn(entry.at("name").get<std::string>(), folder),
                  .isThere = entry.at("there").get<bool>(),
                  .identity = entry.value("identity", "")};
    if (file.isThere) {
      file.content = {.size = entry.at("size").get<std::uint64_t>(), .pieces = entry.at("pieces").get<std::string>()};
      // The digest stands for the list: one that was changed afterwards is no list of this file.
      if (file.content.Digest() != entry.at("sha256").get<std::string>()) throw std::bad_optional_access();
    }
    files.push_back(std::move(file));
  }
  return files;
}

// What `read` makes of the text; nothing when it raises, as the parser does for what is missing or of another kind.
template <typename Read>
auto FromJson(const std::string& text, Read read) -> std::optional<decltype(read(Json()))> {
  try {
    const auto json = Json::parse(text);
    if (json.at("format").get<int>() != kFormat) return std::nullopt;
    return read(json);
  } catch (const Json::exception&) {
    return std::nullopt;
  } catch (const std::bad_optional_access&) {
    return std::nullopt;
  }
}

}  // namespace

std::string PathFrom(const std::string& path, const std::string& folder) {
  const auto relative = fs::path(path).lexically_relative(folder);
  return relative.empty() || *relative.begin() == ".." ? path : relative.generic_string();
}

std::string PathIn(const std::string& name, const std::string& folder) {
  return (fs::path(folder) / name).lexically_normal().string();
}

std::string_view NameOf(Part part) { return kParts.at(static_cast<std::size_t>(part)).name; }
std::string_view NameOf(MadeBy by) { return kMadeBy.at(static_cast<std::size_t>(by)); }
std::string_view CalledOf(Part part) { return kParts.at(static_cast<std::size_t>(part)).called; }

std::optional<Part> PartFrom(std::string_view name) {
  const auto* found = std::ranges::find(kParts, name, &PartNames::name);
  if (found == kParts.end()) return std::nullopt;
  return static_cast<Part>(found - kParts.begin());
}

const KeptFile* Set::Find(Part part) const {
  const auto found = std::ranges::find(manifest.files, part, &KeptFile::part);
  return found == manifest.files.end() ? nullptr : &*found;
}

std::string TextOf(const Manifest& manifest, const std::string& folder) {
  Json json = {{"format", kFormat},          {"made", manifest.made},    {"by", NameOf(manifest.by)},
               {"before", manifest.before},  {"twqb", manifest.version}, {"files", ToJson(manifest.files, folder)},
               {"lacking", manifest.lacking}};
  if (manifest.condition == Condition::InPart) json["inPart"] = true;
  return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string TextOf(const EndNote& note, const std::string& folder) {
  const Json json = {{"format", kFormat}, {"ended", note.at}, {"files", ToJson(note.files, folder)}};
  return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::optional<Manifest> ManifestFrom(const std::string& text, const std::string& folder) {
  return FromJson(text, [&](const Json& json) {
    const auto by = json.at("by").get<std::string>();
    const auto* found = std::ranges::find(kMadeBy, by);
    if (found == kMadeBy.end()) throw std::bad_optional_access();
    return Manifest{.made = json.at("made").get<std::string>(),
                    .by = static_cast<MadeBy>(found - kMadeBy.begin()),
                    .before = json.at("before").get<std::string>(),
                    .version = json.at("twqb").get<std::string>(),
                    .files = FilesFrom(json.at("files"), folder),
                    .lacking = json.at("lacking").get<std::vector<std::string>>(),
                    .condition = json.value("inPart", false) ? Condition::InPart : Condition::Whole};
  });
}

std::optional<EndNote> EndNoteFrom(const std::string& text, const std::string& folder) {
  return FromJson(text, [&](const Json& json) {
    return EndNote{.at = json.at("ended").get<std::string>(), .files = FilesFrom(json.at("files"), folder)};
  });
}

}  // namespace twqb::backup
