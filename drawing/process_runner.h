#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

// Runs a program of its own process and gathers what it writes, with a time
// limit. The drawing library reads DWG files through such a process, and it
// links no windowing library, so this is plain POSIX (posix_spawnp and poll);
// a port to another system replaces this one file.
namespace parvenna::drawing {

struct ProcessResult {
  bool started = false;      // false: the program could not be started (startError says why)
  bool timedOut = false;     // it ran past the limit and was stopped
  bool tooMuchOutput = false;  // it wrote past the limit and was stopped
  int exitStatus = -1;       // when it ended by itself
  int signal = 0;            // the signal that ended it, 0 if none
  std::string out, err;      // what it wrote on its standard output and error
  std::string startError;
  double seconds = 0;        // wall time
  long peakKilobytes = 0;    // the most memory it held
};

// argv[0] is looked for on PATH. The process runs in a process group of its
// own, which is killed whole at the limit; its standard input is empty.
ProcessResult RunProcess(const std::vector<std::string>& argv, std::chrono::milliseconds limit,
                         std::size_t outputLimit);

}  // namespace parvenna::drawing
