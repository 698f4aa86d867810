#include "platform/CaseMapping.h"

#include <unicode/uchar.h>

namespace twqb {

char32_t UpperCaseOf(char32_t character) { return static_cast<char32_t>(u_toupper(static_cast<UChar32>(character))); }

char32_t FoldedCaseOf(char32_t character) {
  return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(character), U_FOLD_CASE_DEFAULT));
}

}  // namespace twqb
