#pragma once

#include <string>

namespace kestro::adapters {

/// Copies the bytes of a file to `target`, readable by the user alone (mode
/// 0600). The copy grows under another name beside the target, is on the disk
/// and only then takes the target's name: the target is either what it was or
/// the whole copy, also after a crash, and a failed copy leaves nothing behind.
///
/// Native paths. Raises 53 when the source is missing, 76 when the target's
/// folder is, 58 when the target exists and must not be overwritten, 75 for
/// everything else.
void CopyFileAtomically(const std::string& source, const std::string& target, bool overwrite);

}  // namespace kestro::adapters
