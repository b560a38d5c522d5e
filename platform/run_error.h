#pragma once

#include <stdexcept>
#include <string>

namespace parvenna {

// The run-time failures that the program's rules rely on. C++ arithmetic does
// not raise them (a division by zero gives infinity, a bad text gives nothing),
// so the routines that need them test first and throw a RunError with the
// number that the error boxes and the catch-all show.
enum class ErrorNumber : int {
  InvalidCall = 5,          // a root of a negative number, a bad argument
  Overflow = 6,             // a value too large for its type, 0 / 0
  SubscriptOutOfRange = 9,  // an index outside its array
  DivisionByZero = 11,
  TypeMismatch = 13,        // a text that is no number
};

class RunError : public std::runtime_error {
 public:
  RunError(ErrorNumber number, const std::string& what)
      : std::runtime_error(what), number_(number) {}

  ErrorNumber Number() const { return number_; }
  int Code() const { return static_cast<int>(number_); }

 private:
  ErrorNumber number_;
};

}  // namespace parvenna
