#include "drawing/dwg_converter.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "drawing/messages.h"
#include "drawing/process_runner.h"
#include "store/places.h"

namespace parvenna::drawing {
namespace {

namespace fs = std::filesystem;

constexpr const char* kScript = "dwg_to_records.mjs";
constexpr const char* kPackage = "node_modules/@mlightcad/libredwg-web/package.json";
// The records of a large drawing run to a few hundred megabytes.
constexpr std::size_t kLargestOutput = std::size_t{2} << 30;

// The converter's exit status for a file it cannot read from the disk; 3 is
// a file it cannot make out.
constexpr int kUnreadable = 4;

std::string Missing(const std::string& what) {
  return std::string(messages::ReasonConverterMissing) + what + messages::ReasonConverterMissingEnd;
}

}  // namespace

bool ConverterComplete(const std::string& directory) {
  std::error_code ec;
  const fs::path dir(directory);
  return !directory.empty() && fs::is_regular_file(dir / kScript, ec) &&
         fs::is_regular_file(dir / kPackage, ec);
}

std::string ConverterDirectoryFor(const std::string& programDirectory) {
  if (programDirectory.empty()) return {};
  const std::string directory = store::SuppliedFile(programDirectory, "dwg_converter");
  return ConverterComplete(directory) ? directory : std::string();
}

std::string ConverterDirectory() { return ConverterDirectoryFor(store::ProgramDirectory()); }

DwgConversion ConvertDwg(const std::string& path, const DwgOptions& options) {
  DwgConversion result;
  const std::string directory =
      options.converterDirectory.empty() ? ConverterDirectory() : options.converterDirectory;
  if (!ConverterComplete(directory)) {
    result.failure = DwgFailure::ConverterMissing;
    result.detail = Missing(directory.empty() ? "it is not beside the program"
                                              : "LibreDWG is missing in " + directory);
    return result;
  }
  const std::string script = (fs::path(directory) / kScript).string();
  ProcessResult run = RunProcess({options.node, "--liftoff-only", script, path}, options.limit,
                                 kLargestOutput);
  result.seconds = run.seconds;
  result.peakKilobytes = run.peakKilobytes;
  if (!run.started) {
    result.failure = DwgFailure::ConverterMissing;
    result.detail = Missing("Node.js cannot be started: " + run.startError);
  } else if (run.timedOut) {
    result.failure = DwgFailure::TimedOut;
    const auto seconds = std::max<long long>(1, (options.limit.count() + 999) / 1000);
    result.detail = messages::ReasonDwgTimedOut + std::to_string(seconds) +
                    messages::ReasonDwgTimedOutEnd + messages::SaveAsAdvice;
  } else if (run.exitStatus == kUnreadable) {
    result.failure = DwgFailure::Unreadable;
    result.detail = messages::ReasonNotFound;
  } else if (run.exitStatus != 0 || run.tooMuchOutput) {
    // The reader refused the file, or broke down on it.
    result.failure = DwgFailure::Damaged;
    result.detail = messages::ReasonDwgDamaged;
  } else {
    result.records = std::move(run.out);
  }
  return result;
}

}  // namespace parvenna::drawing
