#include "drawing/process_runner.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

extern char** environ;

namespace parvenna::drawing {
namespace {

using Clock = std::chrono::steady_clock;

// A pipe whose ends close by themselves.
struct Pipe {
  int read = -1, write = -1;
  Pipe() {
    int fds[2];
    if (pipe2(fds, O_CLOEXEC) == 0) {
      read = fds[0];
      write = fds[1];
    }
  }
  ~Pipe() {
    CloseRead();
    CloseWrite();
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  bool ok() const { return read >= 0 && write >= 0; }
  void CloseRead() {
    if (read >= 0) close(read);
    read = -1;
  }
  void CloseWrite() {
    if (write >= 0) close(write);
    write = -1;
  }
};

class SpawnSetup {
 public:
  SpawnSetup() {
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attr);
  }
  ~SpawnSetup() {
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attr);
  }
  SpawnSetup(const SpawnSetup&) = delete;
  SpawnSetup& operator=(const SpawnSetup&) = delete;
  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attr;
};

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& argv, std::chrono::milliseconds limit,
                         std::size_t outputLimit) {
  ProcessResult result;
  if (argv.empty()) {
    result.startError = "no program";
    return result;
  }
  Pipe out, err;
  if (!out.ok() || !err.ok()) {
    result.startError = std::strerror(errno);
    return result;
  }
  SpawnSetup setup;
  posix_spawn_file_actions_addopen(&setup.actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&setup.actions, out.write, 1);
  posix_spawn_file_actions_adddup2(&setup.actions, err.write, 2);
  // Its own process group, no blocked signals, and the usual handling of
  // every signal whatever this program ignores.
  sigset_t none, all;
  sigemptyset(&none);
  sigfillset(&all);
  sigdelset(&all, SIGKILL);
  sigdelset(&all, SIGSTOP);
  posix_spawnattr_setsigmask(&setup.attr, &none);
  posix_spawnattr_setsigdefault(&setup.attr, &all);
  posix_spawnattr_setpgroup(&setup.attr, 0);
  posix_spawnattr_setflags(&setup.attr, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK |
                                            POSIX_SPAWN_SETSIGDEF);

  std::vector<char*> args;
  for (const std::string& a : argv) args.push_back(const_cast<char*>(a.c_str()));
  args.push_back(nullptr);
  const Clock::time_point began = Clock::now();
  pid_t pid = 0;
  const int spawned = posix_spawnp(&pid, args[0], &setup.actions, &setup.attr, args.data(), environ);
  out.CloseWrite();
  err.CloseWrite();
  if (spawned != 0) {
    result.startError = std::strerror(spawned);
    return result;
  }
  result.started = true;

  const Clock::time_point deadline = began + limit;
  char buffer[65536];
  while (out.read >= 0 || err.read >= 0) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    if (left.count() <= 0) {
      result.timedOut = true;
      break;
    }
    pollfd fds[2] = {{out.read, POLLIN, 0}, {err.read, POLLIN, 0}};
    const int ready = poll(fds, 2, static_cast<int>(std::min<long long>(left.count(), 1000)));
    if (ready < 0 && errno != EINTR) break;
    if (ready <= 0) continue;
    for (int k = 0; k < 2; ++k) {
      if (fds[k].fd < 0 || fds[k].revents == 0) continue;
      const ssize_t n = read(fds[k].fd, buffer, sizeof buffer);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) {
        k == 0 ? out.CloseRead() : err.CloseRead();
        continue;
      }
      (k == 0 ? result.out : result.err).append(buffer, static_cast<std::size_t>(n));
    }
    if (result.out.size() + result.err.size() > outputLimit) {
      result.tooMuchOutput = true;
      break;
    }
  }
  out.CloseRead();
  err.CloseRead();

  // A process that closed its output may still run: it gets the rest of its time.
  int status = 0;
  rusage usage{};
  bool reaped = false;
  while (!result.timedOut && !result.tooMuchOutput) {
    const pid_t done = wait4(pid, &status, WNOHANG, &usage);
    if (done == pid || (done < 0 && errno != EINTR)) {
      reaped = done == pid;
      break;
    }
    if (Clock::now() >= deadline) {
      result.timedOut = true;
      break;
    }
    usleep(10000);
  }
  if (!reaped) {
    if (result.timedOut || result.tooMuchOutput) kill(-pid, SIGKILL);
    while (wait4(pid, &status, 0, &usage) < 0 && errno == EINTR) {
    }
  }
  result.seconds = std::chrono::duration<double>(Clock::now() - began).count();
  result.peakKilobytes = usage.ru_maxrss;
  if (WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  return result;
}

}  // namespace parvenna::drawing
