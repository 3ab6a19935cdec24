#include <vorn/foundation/exception.h>

namespace {

char const kSeparator[] = " : ";

// Entry 0 answers every code outside 5001..5007.
char const* const kErrorTexts[8] = {
    "",
    "Unknown error",
    "Out of range",
    "Parameter is NULL",
    "Not initialized",
    "Out of Memory",
    "Not supported",
    "Wrong coordinate system",
};

}  // namespace

VornException::VornException() : code_(Vorn::ErrorCodes::NoCode) {}

VornException::VornException(char const* message, int code) : message_(message), code_(code) {}

VornException::VornException(char const* message, int code, char const* detail)
    : message_(message), code_(code) {
  message_ += kSeparator;
  message_ += detail;
}

VornException::VornException(char const* message, int code, int /*value*/)
    : message_(message), code_(code) {
  message_ += kSeparator;
}

VornException::VornException(char const* message, int code, long long value)
    : message_(message), code_(code) {
  message_ += kSeparator;
  // Digits of the magnitude, filled from the end; unsigned so that the most negative
  // value has a magnitude too.
  char digits[21];
  char* first = digits + sizeof(digits) - 1;
  *first = '\0';
  unsigned long long magnitude = value < 0 ? 0ULL - static_cast<unsigned long long>(value)
                                           : static_cast<unsigned long long>(value);
  do {
    *--first = static_cast<char>('0' + magnitude % 10);
    magnitude /= 10;
  } while (magnitude != 0);
  if (value < 0) *--first = '-';
  message_ += first;
}

VornException::VornException(VornException const& other)
    : std::exception(other), message_(other.message_), code_(other.code_) {}

VornException const& VornException::operator=(VornException const& other) {
  code_ = other.code_;
  message_ = other.Message();
  return *this;
}

VornException::~VornException() = default;

char const* VornUtilErrors::GetErrorString(int code) {
  int const first = Vorn::ErrorCodes::UnknownError;
  int const last = Vorn::ErrorCodes::WrongCoordinateSystem;
  return kErrorTexts[code >= first && code <= last ? code - first + 1 : 0];
}
