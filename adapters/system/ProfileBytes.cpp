#include "adapters/system/ProfileBytes.h"

namespace twqb {

std::string TextOfProfile(std::string_view bytes) { return std::string(bytes); }

std::string BytesForProfile(std::string_view text) { return std::string(text); }

}  // namespace twqb
