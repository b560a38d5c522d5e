#include "store/value.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

#include "geometry/numbers.h"
#include "store/store.h"

namespace parvenna::store {
namespace {

std::string Lower(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
  return text;
}

// A text as a number: blanks around it, an optional sign, digits with one
// point, an optional exponent; "True" and "False" as -1 and 0 do not count
// here, since no field of ours holds them as numbers.
bool ParseNumber(std::string_view text, double& out) {
  text = Trim(text);
  if (text.empty()) return false;
  if (text.front() == '+') text.remove_prefix(1);
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), out);
  return ec == std::errc() && end == text.data() + text.size() && std::isfinite(out);
}

[[noreturn]] void Mismatch(std::string_view what) {
  throw RunError(ErrorNumber::TypeMismatch, "Type mismatch: " + std::string(what));
}

[[noreturn]] void NullUse() {
  throw StoreError(errors::InvalidUseOfNull, "Invalid use of Null");
}

std::int64_t RoundToWhole(double x) {
  return static_cast<std::int64_t>(std::nearbyint(x));  // the default mode: ties to even
}

}  // namespace


std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (unsigned char c : text) {
    if ((c & 0xC0) != 0x80) ++count;
  }
  return count;
}

bool Value::AsBool() const {
  if (IsNull()) NullUse();
  if (IsBool()) return std::get<bool>(v_);
  if (IsWhole()) return std::get<std::int64_t>(v_) != 0;
  if (IsDouble()) return std::get<double>(v_) != 0;
  std::string text = Lower(Trim(std::get<std::string>(v_)));
  if (text == "true" || text == "yes" || text == "on") return true;
  if (text == "false" || text == "no" || text == "off") return false;
  double number = 0;
  if (!ParseNumber(text, number)) Mismatch(text);
  return number != 0;
}

std::int64_t Value::Whole(std::int64_t low, std::int64_t high) const {
  if (IsNull()) NullUse();
  std::int64_t whole = 0;
  if (IsBool()) {
    whole = std::get<bool>(v_) ? 1 : 0;
  } else if (IsWhole()) {
    whole = std::get<std::int64_t>(v_);
  } else {
    double number = IsDouble() ? std::get<double>(v_) : 0;
    if (IsText() && !ParseNumber(std::get<std::string>(v_), number)) Mismatch(std::get<std::string>(v_));
    if (std::fabs(number) > 9.2e18) throw RunError(ErrorNumber::Overflow, "Overflow");
    whole = RoundToWhole(number);
  }
  if (whole < low || whole > high) throw RunError(ErrorNumber::Overflow, "Overflow");
  return whole;
}

std::int16_t Value::AsInteger() const {
  return static_cast<std::int16_t>(Whole(std::numeric_limits<std::int16_t>::min(),
                                         std::numeric_limits<std::int16_t>::max()));
}

std::int32_t Value::AsLong() const {
  return static_cast<std::int32_t>(Whole(std::numeric_limits<std::int32_t>::min(),
                                         std::numeric_limits<std::int32_t>::max()));
}

double Value::AsDouble() const {
  if (IsNull()) NullUse();
  if (IsBool()) return std::get<bool>(v_) ? 1.0 : 0.0;
  if (IsWhole()) return static_cast<double>(std::get<std::int64_t>(v_));
  if (IsDouble()) return std::get<double>(v_);
  double number = 0;
  if (!ParseNumber(std::get<std::string>(v_), number)) Mismatch(std::get<std::string>(v_));
  return number;
}

std::string Value::AsText() const {
  if (IsNull()) return "";
  if (IsBool()) return std::get<bool>(v_) ? "True" : "False";
  if (IsWhole()) return std::to_string(std::get<std::int64_t>(v_));
  if (IsDouble()) return PlainNumber(std::get<double>(v_));
  return std::get<std::string>(v_);
}

Value CoerceTo(FieldType type, int size, const Value& value, std::string_view fieldName) {
  if (value.IsNull()) return value;
  switch (type) {
    case FieldType::Boolean:
      return Value(value.AsBool());
    case FieldType::Integer:
      return Value(std::int64_t{value.AsInteger()});
    case FieldType::Long:
      return Value(std::int64_t{value.AsLong()});
    case FieldType::Double:
      return Value(value.AsDouble());
    case FieldType::Text: {
      std::string text = value.AsText();
      if (size > 0 && CharacterCount(text) > static_cast<std::size_t>(size)) {
        throw StoreError(errors::FieldTooSmall,
                         "The field '" + std::string(fieldName) +
                             "' is too small to accept the amount of data you attempted to add.");
      }
      return Value(std::move(text));
    }
    case FieldType::DateTime:
      return Value(value.AsText());
    case FieldType::Any:
      return value;
  }
  return value;
}

}  // namespace parvenna::store
