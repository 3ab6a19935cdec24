// Conversion between narrow text (UTF-8 bytes) and wide text (UTF-16 in 16-bit code
// units), the text-conversion half of VornUtil (util/vorn_util.h assembles the class).
//
// The encodings are fixed, whatever the process locale. A character outside the Basic
// Multilingual Plane is a surrogate pair on the wide side and four bytes on the narrow
// side. A count that limits a conversion never splits a character: conversion ends
// before the first character that does not fit. Malformed input (invalid or overlong
// UTF-8, surrogate code points in UTF-8, unpaired surrogates in UTF-16) met before that
// point makes the whole result empty: the allocated "" for the string forms, 0 for the
// buffer form. No input is read past its terminator, nor past the last character that a
// limiting count lets through.
//
// Results are new strings owned by the caller. If their buffer cannot be allocated they
// come back empty (no buffer), as every library string does.
//
// The functions keep no state and may be called from any thread; each argument must be
// used by one thread at a time.
#ifndef VORN_FOUNDATION_CONVERSION_H
#define VORN_FOUNDATION_CONVERSION_H

#include <vorn/foundation/export.h>
#include <vorn/foundation/stringbase.h>

class VORN_API VornUtilText {
public:
  VornUtilText() = delete;

  // Converts the UTF-8 text up to its zero byte into at most count units, leaving out
  // the first character that does not fit (a surrogate pair is never split) and
  // everything after it. Note: count limits the units produced, not the bytes read;
  // text needs no terminator when it holds enough characters to fill count units, as
  // nothing behind the last one converted is read. When nothing converts the result is
  // the allocated "" (not empty()).
  static stringbase<unsigned short, wstringfuncs> StringToWString(char const* text,
                                                                  unsigned int count);
  // The whole zero-terminated text (count = its byte length, which never limits); text
  // must not be null. A sequence truncated by the terminator is malformed.
  static stringbase<unsigned short, wstringfuncs> StringToWString(char const* text);
  // The whole text of the string, as above; an empty text gives the allocated "".
  static stringbase<unsigned short, wstringfuncs> StringToWString(
      stringbase<char, astringfuncs> const& text);

  // Converts the zero-terminated UTF-16 text into at most count bytes, leaving out the
  // first character that does not fit and everything after it. Note: count limits the
  // bytes written, not the units read. An empty result is the allocated "".
  static stringbase<char, astringfuncs> WStringToString(unsigned short const* text,
                                                        unsigned int count);
  // The whole zero-terminated text, with as many bytes as its encoding needs; text must
  // not be null.
  static stringbase<char, astringfuncs> WStringToString(unsigned short const* text);
  // The whole text of the string; an empty string gives the allocated "".
  static stringbase<char, astringfuncs> WStringToString(
      stringbase<unsigned short, wstringfuncs> const& text);
  // Writes the conversion of text, at most size bytes, into buffer, then a zero byte
  // behind it, and returns the number of bytes before that zero. Note: a conversion that
  // fills all size bytes puts the terminator at buffer[size], so buffer must hold
  // size + 1 bytes. Malformed text returns 0 with buffer[0] zero and nothing else written.
  static unsigned int WStringToString(stringbase<unsigned short, wstringfuncs> const& text,
                                      char* buffer, unsigned int size);
};

#endif
