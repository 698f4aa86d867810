// The objects of other programs that the module variables hold over the end of the last bridge object: the shared
// connection and the host's call-back, and the session while one stands.
//
// They live as long as the library is loaded. A host that has it unloaded says so here ahead of that; while it stays
// loaded nothing calls this, and a later object finds all as it was.
#pragma once

namespace twqb {

// The shared connection, which is closed if it is not, and the call-back go; each is made anew when it is next wanted.
// All other variables keep their values.
void LetGoOfOthersObjects();

// The same, and the session, without any call to them: they are left as they are, for ever.
void ForgetOthersObjects();

// Whether the progress form has been left standing.
[[nodiscard]] bool DoesFormStand();

}  // namespace twqb
