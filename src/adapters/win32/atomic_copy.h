#pragma once

#include <string>

namespace kestro::adapters {

/// Copies a file to `target`. The copy grows under another name beside the
/// target, is on the disk and only then takes the target's name: the target is
/// either what it was or the whole copy, also after a crash, and a failed copy
/// leaves nothing behind. The copy has the access rights of its folder and is
/// not write-protected, whatever the source is.
///
/// Raises 53 when the source is missing, 76 when the target's folder is, 58 when
/// the target exists and must not be overwritten, 75 for everything else (a
/// write-protected target included).
void CopyFileAtomically(const std::wstring& source, const std::wstring& target, bool overwrite);

}  // namespace kestro::adapters
