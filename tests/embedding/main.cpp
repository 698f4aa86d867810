// A host that uses one layer, to see that it is found and links.

#include "platform/Text.h"

int main() { return twqb::FoldCase("TWQB") == "twqb" ? 0 : 1; }
