// The interface that the type library tells, as its compiler writes it down for C++, and its identifiers.
#pragma once

#include <oaidl.h>
#include <windows.h>

#include "TWQBClient90_h.h"
