#pragma once

namespace velmorand {

/// Keeps the library of the toolkit's own connection from writing to standard error when that connection breaks. It
/// ends the process then all the same, and our exit handler says why.
void silenceToolkitConnectionErrors();

}  // namespace velmorand
