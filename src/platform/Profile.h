#pragma once

#include <cstdint>

namespace platform
{

// The private-profile (INI file) calls with the behaviour of their Win32 namesakes:
// section and key names compare case-insensitively, blanks around names and values are
// ignored, a value in matching quotes loses them, and a missing file, section or key gives
// the default (with its trailing blanks removed). The result is cut to p_size - 1
// characters and always terminated; the return value is the number of characters copied
// (without the terminator). Lines end at CR LF, LF or a CR alone.
//
// Each file is parsed once and the parse reused until the file changes (ProfileCache), so
// reading many keys of a big file costs one parse.
//
// With p_section null the buffer receives every section name, each terminated, the list
// ending in an extra terminator; with p_key null it receives every key of the section the
// same way. When such a list does not fit, the return value is p_size - 2.
//
// File names go through ResolvePath, so they are relative to the game directory.
uint32_t GetPrivateProfileString(const char* p_section, const char* p_key, const char* p_default,
                                 char* p_buffer, uint32_t p_size, const char* p_fileName);

// Win32 GetPrivateProfileInt: the value's leading decimal number, or p_default when the key
// is missing; a value that starts without a digit gives 0. Numbers beyond 32 bits wrap
// around ("4294967297" gives 1, "-4294967297" gives -1).
int32_t GetPrivateProfileInt(const char* p_section, const char* p_key, int32_t p_default,
                             const char* p_fileName);

// Writes "key=value" into the section, creating the file and the section when needed and
// keeping every other line of the file as it was; added lines end the way the file's first
// line does. A null p_value deletes the key; a null p_key deletes the whole section. The file
// is replaced through a temporary file and a rename, so a failed write never leaves it half
// written. Returns false when the file cannot be written or p_section is null.
bool WritePrivateProfileString(const char* p_section, const char* p_key, const char* p_value,
                               const char* p_fileName);

} // namespace platform
