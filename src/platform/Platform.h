// One implementation of each seam: what a host composes the library with.
#pragma once

#include "platform/ado.h"
#include "platform/callback.h"
#include "platform/desk.h"
#include "platform/machine.h"
#include "platform/transport.h"

namespace twqb {

// None of the five is owned; each must outlive every bridge object and every session.
struct Platform {
  ado::Provider* database = nullptr;
  TransportFactory* quickbooks = nullptr;
  Desk* desk = nullptr;
  Machine* machine = nullptr;
  CallbackFactory* callback = nullptr;
};

}  // namespace twqb
