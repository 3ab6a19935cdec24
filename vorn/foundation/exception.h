// VornException: the one exception type the library raises, and the error-code table.
//
// Every failed precondition is raised as VornException(message, code) by value with a
// fixed English message; callers catch it by reference and read Message() and
// ErrorCode(). The exception owns a copy of its message; copies own separate copies.
// what() is deliberately not overridden: it gives the standard library's default text,
// never the message.
//
// The three-argument constructors are for callers that want a detail after the
// message; the library itself always uses the two-argument form.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_FOUNDATION_EXCEPTION_H
#define VORN_FOUNDATION_EXCEPTION_H

#include <exception>

#include <vorn/foundation/export.h>
#include <vorn/foundation/stringbase.h>

namespace Vorn {

// The codes a VornException carries; GetErrorString gives the text of 5001..5007.
namespace ErrorCodes {
constexpr int UnknownError = 5001;           // never raised by the library itself
constexpr int OutOfRange = 5002;             // an index or grid position out of range
constexpr int ParameterIsNull = 5003;        // a required pointer argument is null
constexpr int NotInitialized = 5004;         // a box or grid used before initialisation
constexpr int OutOfMemory = 5005;            // an allocation inside an attribute value failed
constexpr int NotSupported = 5006;           // an operation the value's type does not support
constexpr int WrongCoordinateSystem = 5007;  // never raised by the library itself
// Failed lookups by name, object kinds a collection does not know, and the default
// exception: no text in the table.
constexpr int NoCode = -1;
}  // namespace ErrorCodes

}  // namespace Vorn

class VORN_API VornException : public std::exception {
public:
  // No message (Message() gives ""), code -1.
  VornException();
  // A copy of message (null gives no message) and the code.
  VornException(char const* message, int code);
  // message + " : " + detail. A null message gives " : " + detail; a null detail leaves
  // the message ending in " : ".
  VornException(char const* message, int code, char const* detail);
  // message + " : ". Note: value is accepted and deliberately dropped, so the message
  // ends in " : " with nothing after it.
  VornException(char const* message, int code, int value);
  // message + " : " + the signed decimal text of value ("-" for negatives, no leading
  // zeros, no grouping), e.g. "Out of range : -1234567890123".
  VornException(char const* message, int code, long long value);
  // A long takes the long long form, so that std::int64_t (long on some targets, long
  // long on others) never competes with the int form.
  VornException(char const* message, int code, long value)
      : VornException(message, code, static_cast<long long>(value)) {}

  // Same message (an empty source stays empty) and code.
  VornException(VornException const& other);
  // Takes the code, then the message text from other.Message(). Note: the message then
  // always owns a buffer, "" when other had no message; the std::exception part is
  // left as it is.
  VornException const& operator=(VornException const& other);
  ~VornException() override;

  int ErrorCode() const { return code_; }
  // The message, or "" when there is none; never null.
  char const* Message() const { return message_.c_str(); }

private:
  stringbase<char, astringfuncs> message_;
  int code_;
};

// The error-text half of VornUtil (util/vorn_util.h assembles the whole class).
class VORN_API VornUtilErrors {
public:
  VornUtilErrors() = delete;

  // The fixed text of codes 5001..5007 ("Unknown error", "Out of range", "Parameter is
  // NULL", "Not initialized", "Out of Memory", "Not supported", "Wrong coordinate
  // system"); "" for every other code, -1 included. Static text, never null.
  static char const* GetErrorString(int code);
};

#endif
