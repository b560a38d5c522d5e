#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace parvenna::store {

// The logical types of a field. They decide how a value is coerced when it is
// written and how it comes back when it is read, whatever SQLite keeps.
enum class FieldType {
  Boolean,   // true or false
  Integer,   // signed 16-bit
  Long,      // signed 32-bit
  Double,    // 64-bit float
  Text,      // at most Size characters (code points); Size 0 means no limit
  DateTime,  // "YYYY-MM-DD HH:MM:SS"
  Any,       // a column of no known type, or a computed column: taken as it comes
};

// One field value: Null, a Boolean, a whole number, a Double or a text.
// The As... readers convert the way the forms expect (a Boolean read as a
// number is 1 or 0, a number read as text is in general form); a Null or a
// text that is no number raises the matching run-time error.
class Value {
 public:
  Value() = default;
  Value(bool v) : v_(v) {}
  Value(int v) : v_(std::int64_t{v}) {}
  Value(std::int64_t v) : v_(v) {}
  Value(double v) : v_(v) {}
  Value(std::string v) : v_(std::move(v)) {}
  Value(std::string_view v) : v_(std::string(v)) {}
  Value(const char* v) : v_(std::string(v)) {}

  bool IsNull() const { return std::holds_alternative<std::monostate>(v_); }
  bool IsBool() const { return std::holds_alternative<bool>(v_); }
  bool IsWhole() const { return std::holds_alternative<std::int64_t>(v_); }
  bool IsDouble() const { return std::holds_alternative<double>(v_); }
  bool IsText() const { return std::holds_alternative<std::string>(v_); }

  bool AsBool() const;
  std::int16_t AsInteger() const;  // overflow outside 16 bits
  std::int32_t AsLong() const;     // overflow outside 32 bits
  double AsDouble() const;
  std::string AsText() const;      // Null reads as the empty text

  friend bool operator==(const Value&, const Value&) = default;

 private:
  std::int64_t Whole(std::int64_t low, std::int64_t high) const;
  std::variant<std::monostate, bool, std::int64_t, double, std::string> v_;
};

// The value coerced to a field's type before it is written: the size of a
// text is enforced, a number that does not fit its integer overflows, a text
// that is no number is a type mismatch. Numbers going into integers are
// rounded to the nearest, ties to even.
Value CoerceTo(FieldType type, int size, const Value& value, std::string_view fieldName);


// The number of characters (code points) of a UTF-8 text.
std::size_t CharacterCount(std::string_view text);

}  // namespace parvenna::store
