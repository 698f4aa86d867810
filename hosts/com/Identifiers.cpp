// The identifiers that Interface.h declares, once for the library.

// clang-format off
#include <initguid.h>
#include "com/Interface.h"
// clang-format on
