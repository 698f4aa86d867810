// How the program's process gets its memory: what the libraries under it allocate again and again stays at hand.
//
// A transfer reads three small documents for each record, and each takes pages of a size that the C library gives back
// to a common heap and puts together anew. It is for a program alone: a library must leave such things to its host.
#pragma once

namespace twqb::cli {

// Ahead of anything that reads a document or opens a database.
void PrepareMemory();

}  // namespace twqb::cli
