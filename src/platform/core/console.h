#pragma once

#include <cstdio>

namespace platform {

/// Whether what is written to a stream is seen by a person at once.
bool isTerminal(std::FILE* stream);

/// Makes a stream pass bytes on as they are, on systems that else turn ends of lines.
void passBytes(std::FILE* stream);

} // namespace platform
