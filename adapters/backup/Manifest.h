// What a set of a backup tells of itself: when and before what it was made, and of which pieces its files are.
//
// Stands as JSON in the set's folder. Paths within the working folder are told from there, so that a folder which is
// moved takes its sets along.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/backup/PieceStore.h"

namespace twqb::backup {

enum class Part : std::uint8_t { Billing, Company, Settings, Registry };

// "billing", as a user names it; nothing for a name that is none.
[[nodiscard]] std::string_view NameOf(Part part);
[[nodiscard]] std::optional<Part> PartFrom(std::string_view name);
// "BillingDb", as a sentence calls it.
[[nodiscard]] std::string_view CalledOf(Part part);
[[nodiscard]] inline bool IsDatabase(Part part) { return part == Part::Billing || part == Part::Company; }

// A path of a file as it is noted, so that a working folder can be moved: from that folder, when it lies inside. And
// back.
[[nodiscard]] std::string PathFrom(const std::string& path, const std::string& folder);
[[nodiscard]] std::string PathIn(const std::string& name, const std::string& folder);

struct KeptFile {
  Part part = Part::Billing;
  std::string path;     // full
  bool isThere = true;  // a file that was not there is kept as such
  Content content = {};
  std::string identity = {};  // by which the file is known to be unchanged without reading it; empty: it can't be

  // Whether the two are the same to a reader: both absent, or of the same bytes.
  [[nodiscard]] bool IsLike(const KeptFile& other) const {
    return isThere == other.isThere && (!isThere || content == other.content);
  }
};

enum class MadeBy : std::uint8_t { Hand, Transfer, Restore, Undo };

[[nodiscard]] std::string_view NameOf(MadeBy by);  // "hand"

// InPart: some of its files were those of a restore that was broken off, and some were not yet. With both sides of it,
// a transfer would double records.
enum class Condition : std::uint8_t { Whole, InPart };

struct Manifest {
  std::string made;  // local time with its zone
  MadeBy by = MadeBy::Hand;
  std::string before = {};   // the command: "send clients"
  std::string version = {};  // of twqb
  std::vector<KeptFile> files = {};
  std::vector<std::string> lacking = {};  // sentences about what could not be backed up
  Condition condition = Condition::Whole;
};

// How the files were when the command had ended.
struct EndNote {
  std::string at;
  std::vector<KeptFile> files = {};
};

struct Set {
  std::string name;
  Manifest manifest;
  std::optional<EndNote> end = {};
  bool isUndone = false;
  bool isNamed = false;  // by somebody: a set that was copied, or given another name

  // It was made by itself, and goes so.
  [[nodiscard]] bool IsAutomatic() const { return manifest.by != MadeBy::Hand && !isNamed; }
  [[nodiscard]] const KeptFile* Find(Part part) const;
};

// `folder` is the working folder. Nothing for a text that is no manifest of this kind.
[[nodiscard]] std::string TextOf(const Manifest& manifest, const std::string& folder);
[[nodiscard]] std::string TextOf(const EndNote& note, const std::string& folder);
[[nodiscard]] std::optional<Manifest> ManifestFrom(const std::string& text, const std::string& folder);
[[nodiscard]] std::optional<EndNote> EndNoteFrom(const std::string& text, const std::string& folder);

}  // namespace twqb::backup
