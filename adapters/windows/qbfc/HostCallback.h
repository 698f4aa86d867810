// The call-back seam on the host's class TWQBCallback90.CMain, by late binding: its properties Mode and Text.
#pragma once

#include "platform/callback.h"

namespace twqb::windows {

class HostCallbackFactory : public CallbackFactory {
 public:
  // Raises 429 where the host has no such class.
  std::unique_ptr<Callback> CreateCallback() override;
};

}  // namespace twqb::windows
