// Identifier generation.
//
// VornUtilGuid produces 36-character identifier texts in the 8-4-4-4-12 grouping of
// upper-case hexadecimal digits. They are not standards-conforming UUIDs: no version or
// variant bits are set. The first 27 digits come from the C runtime's rand(), reseeded
// three times per identifier from a monotonic nanosecond counter; the last nine encode
// the local clock time and a millisecond tick:
//
//   positions  0-7, 9-12, 14-17, 19-22, 24-26   random digits
//   positions  8, 13, 18, 23                    '-'
//   positions 27-28, 29-30, 31-32               local hour, minute, second ("%02X")
//   positions 33-35                             millisecond tick modulo 1000 ("%03X")
//
// Two identifiers generated within the same counter reading may be equal; the design
// accepts this. Applications reach these members as VornUtil::GenerateGuid and
// VornUtil::GuidSeed (see vorn/util/vorn_util.h).
//
// Not thread-safe: every call reseeds the process-wide srand()/rand() state, which
// disturbs any other user of rand() and lets two threads interleave their sequences.
// The library takes no lock.
#ifndef VORN_UTIL_GUID_H
#define VORN_UTIL_GUID_H

#include <vorn/foundation/export.h>
#include <vorn/foundation/stringbase.h>

class VORN_API VornUtilGuid {
public:
  VornUtilGuid() = delete;

  // Writes a fresh identifier, always 36 characters and a terminating zero, into buffer
  // and returns buffer. buffer must hold at least 37 characters; neither its size nor a
  // null pointer is tested.
  static char* GenerateGuid(char* buffer);

  // A fresh identifier as a narrow string of length 36; an empty string if the string's
  // buffer cannot be allocated.
  static stringbase<char, astringfuncs> GenerateGuid();

  // Starts at 2. Applications may read and write it.
  // Note: the generator deliberately does not use it.
  static int GuidSeed;
};

#endif
