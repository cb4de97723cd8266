#include "programs/cti-windows/standard_streams.h"

#include <windows.h>

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <iostream>

namespace kestro::programs {
namespace {

bool LeadsSomewhere(DWORD which) {
  const HANDLE handle = ::GetStdHandle(which);
  return handle != nullptr && handle != INVALID_HANDLE_VALUE;
}

void LeadToConsole(std::FILE* stream) {
  if (std::freopen("CONOUT$", "w", stream) == nullptr) std::clearerr(stream);
}

}  // namespace

void OpenStandardStreams() {
  const bool has_output = LeadsSomewhere(STD_OUTPUT_HANDLE);
  const bool has_errors = LeadsSomewhere(STD_ERROR_HANDLE);
  if ((!has_output || !has_errors) && ::AttachConsole(ATTACH_PARENT_PROCESS) != FALSE) {
    if (!has_output) LeadToConsole(stdout);
    if (!has_errors) LeadToConsole(stderr);
  }
  ::_setmode(::_fileno(stdout), _O_BINARY);
  ::_setmode(::_fileno(stderr), _O_BINARY);
  std::cout.clear();
  std::cerr.clear();
}

}  // namespace kestro::programs
