#include "services/OthersObjects.h"

#include <memory>
#include <utility>
#include <vector>

#include "services/ModuleVariables.h"

namespace twqb {

namespace {

struct Objects {
  std::unique_ptr<ado::Connection> connection;
  std::unique_ptr<Callback> callback;
  std::shared_ptr<QBSessionManager> session;
};

}  // namespace

void LetGoOfOthersObjects() {
  Vars().g_cnGlobal.reset();
  Vars().g_CnRefCount = 0;  // counts who uses that connection
  Vars().g_QBCallback.reset();
}

void ForgetOthersObjects() {
  // Never destroyed: that would call them.
  static auto& forgotten = *std::make_unique<std::vector<Objects>>().release();
  forgotten.push_back({.connection = std::move(Vars().g_cnGlobal),
                       .callback = std::move(Vars().g_QBCallback),
                       .session = std::move(Vars().g_QBSession)});
}

bool DoesFormStand() { return Vars().msgForm.has_value(); }

}  // namespace twqb
