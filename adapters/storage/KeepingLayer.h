// A file layer for the engine: the one that is its default, with readers' places kept (ReaderPlace.h).
//
// For files that processes share memory over. What is not about places goes through as it is, to whatever layer is the
// default at that moment.
#pragma once

namespace twqb::storage {

// The name by which the engine knows it. Nothing where it can't be had.
[[nodiscard]] const char* KeepingLayer();

}  // namespace twqb::storage
