#include "drawing/dwg_records.h"

#include <algorithm>

#include <charconv>
#include <cmath>
#include <limits>

namespace parvenna::drawing {
namespace {

constexpr std::string_view kFirstLine = "parvenna-dwg\t1";

}  // namespace

bool DwgRecords::Parse(std::string text, std::string& why) {
  text_ = std::move(text);
  fields_.clear();
  records_.clear();
  layers_.clear();
  counts_.clear();
  blocks_.clear();
  model_ = {0, 0};
  const std::string_view all(text_);
  if (all.substr(0, kFirstLine.size()) != kFirstLine ||
      (all.size() > kFirstLine.size() && all[kFirstLine.size()] != '\n')) {
    why = "the DWG reader gave no drawing";
    return false;
  }
  if (all.size() >= std::numeric_limits<std::uint32_t>::max()) {
    why = "the drawing is too large";
    return false;
  }
  bool ended = false, inModel = false, inBlock = false;
  std::size_t blockHeader = 0;
  for (std::size_t at = kFirstLine.size() + 1; at < all.size();) {
    std::size_t end = all.find('\n', at);
    if (end == std::string_view::npos) end = all.size();
    const std::string_view line = all.substr(at, end - at);
    at = end + 1;
    if (line.empty()) continue;
    Record record{static_cast<std::uint32_t>(fields_.size()), 0};
    for (std::size_t from = 0;;) {
      const std::size_t tab = line.find('\t', from);
      fields_.push_back(line.substr(from, tab == std::string_view::npos ? tab : tab - from));
      ++record.count;
      if (tab == std::string_view::npos) break;
      from = tab + 1;
    }
    const std::size_t index = records_.size();
    records_.push_back(record);
    const std::string_view kind = Kind(index);
    if (kind == "end") {
      ended = true;
      break;
    }
    if (kind == "layer") {
      layers_.push_back(index);
    } else if (kind == "count") {
      counts_.push_back(index);
    } else if (kind == "model") {
      inModel = true;
      model_ = {index + 1, index + 1};
    } else if (kind == "endmodel") {
      inModel = false;
    } else if (kind == "block") {
      inBlock = true;
      blockHeader = index;
    } else if (kind == "endblock" && inBlock) {
      inBlock = false;
      if (FieldCount(blockHeader) > 1) {
        blocks_.emplace(Field(blockHeader, 1), std::make_pair(blockHeader, Range{blockHeader + 1, index}));
      }
    } else if (inModel) {
      model_.second = index + 1;
    }
  }
  if (!ended) {
    why = "the DWG reader stopped before the end of the drawing";
    return false;
  }
  return true;
}

std::string_view DwgRecords::Field(std::size_t record, std::size_t field) const {
  const Record& r = records_[record];
  return field < r.count ? fields_[r.first + field] : std::string_view();
}

bool DwgRecords::Block(std::string_view name, std::size_t& header, Range& entities) const {
  const auto it = blocks_.find(name);
  if (it == blocks_.end()) return false;
  header = it->second.first;
  entities = it->second.second;
  return true;
}

std::string_view FieldReader::Word() {
  if (next_ >= records_.FieldCount(record_)) {
    ok_ = false;
    return {};
  }
  return records_.Field(record_, next_++);
}

std::string FieldReader::Text() { return Unescape(Word()); }

double FieldReader::Number() {
  const std::string_view word = Word();
  double value = 0;
  const auto [ptr, ec] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (word.empty() || ec != std::errc() || ptr != word.data() + word.size() || !std::isfinite(value)) {
    ok_ = false;
    return 0;
  }
  return value;
}

int FieldReader::Whole(int low, int high) {
  return static_cast<int>(std::clamp(std::trunc(Number()), static_cast<double>(low), static_cast<double>(high)));
}

std::size_t FieldReader::Count(std::size_t fieldsEach) {
  const double n = Number();
  const std::size_t left = records_.FieldCount(record_) - std::min(next_, records_.FieldCount(record_));
  if (!ok_ || n < 0 || n != std::floor(n) || n * static_cast<double>(fieldsEach) > static_cast<double>(left)) {
    ok_ = false;
    return 0;
  }
  return static_cast<std::size_t>(n);
}

std::string Unescape(std::string_view field) {
  std::string out;
  out.reserve(field.size());
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (field[i] != '\\' || i + 1 == field.size()) {
      out += field[i];
      continue;
    }
    const char c = field[++i];
    out += c == 't' ? '\t' : c == 'n' ? '\n' : c == 'r' ? '\r' : c;
  }
  return out;
}

}  // namespace parvenna::drawing
