#pragma once

#include <grp.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace parvenna::testing {

// How the child runs: as a user who is not root (tests run as root in CI, and
// root writes through any file mode), and with the files it writes held to a
// size, so that a write past it fails in the kernel as on a full disk.
struct ChildLimits {
  bool unprivileged = false;
  std::optional<off_t> fileSizeLimit;
};

struct ChildOutcome {
  int status = -1;  // the exit status; 128 + the signal when one ended it
  std::string said;  // what the body returned
};

inline constexpr uid_t kNobody = 65534;

// Runs `body` in a forked copy of this process under `limits` and hands back
// what it returned. The child never returns into the test: it leaves with
// _exit once the body is done, so no test machinery runs twice.
inline ChildOutcome RunInChild(const ChildLimits& limits, const std::function<std::string()>& body) {
  int pipeFds[2];
  if (pipe(pipeFds) != 0) return {};
  const pid_t pid = fork();
  if (pid == 0) {
    close(pipeFds[0]);
    if (limits.unprivileged && geteuid() == 0) {
      if (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0) _exit(90);
    }
    if (limits.fileSizeLimit) {
      signal(SIGXFSZ, SIG_IGN);  // the write fails with EFBIG instead of ending the process
      const rlimit size{static_cast<rlim_t>(*limits.fileSizeLimit),
                        static_cast<rlim_t>(*limits.fileSizeLimit)};
      if (setrlimit(RLIMIT_FSIZE, &size) != 0) _exit(91);
    }
    std::string said;
    int status = 0;
    try {
      said = body();
    } catch (const std::exception& e) {
      said = std::string("exception: ") + e.what();
      status = 92;
    }
    std::size_t written = 0;
    while (written < said.size()) {
      const ssize_t n = write(pipeFds[1], said.data() + written, said.size() - written);
      if (n <= 0) break;
      written += static_cast<std::size_t>(n);
    }
    close(pipeFds[1]);
    _exit(status);
  }
  close(pipeFds[1]);
  ChildOutcome outcome;
  char buffer[4096];
  ssize_t n = 0;
  while ((n = read(pipeFds[0], buffer, sizeof buffer)) > 0) outcome.said.append(buffer, static_cast<std::size_t>(n));
  close(pipeFds[0]);
  int status = 0;
  waitpid(pid, &status, 0);
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return outcome;
}

// The store's helper program, beside the tests.
inline const char* HelperPath() { return PARVENNA_APP_DIR "/../test-helpers/store_test_helper"; }

// The helper program as a child process with its standard input and output
// on pipes, and `environment` added to this process's own.
class Child {
 public:
  explicit Child(std::vector<std::string> args,
                 std::vector<std::pair<std::string, std::string>> environment = {}) {
    int toChild[2], fromChild[2];
    if (pipe(toChild) != 0 || pipe(fromChild) != 0) throw std::runtime_error("pipe");
    pid_ = fork();
    if (pid_ == 0) {
      dup2(toChild[0], 0);
      dup2(fromChild[1], 1);
      close(toChild[1]);
      close(fromChild[0]);
      for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
      std::vector<char*> argv;
      std::string helper = HelperPath();
      argv.push_back(helper.data());
      for (std::string& a : args) argv.push_back(a.data());
      argv.push_back(nullptr);
      execv(helper.c_str(), argv.data());
      _exit(127);
    }
    close(toChild[0]);
    close(fromChild[1]);
    in_ = toChild[1];
    out_ = fdopen(fromChild[0], "r");
  }
  ~Child() {
    if (in_ >= 0) close(in_);
    if (out_) fclose(out_);
    if (pid_ > 0 && !waited_) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // The next line the child printed; empty at its end.
  std::string ReadLine() {
    char buffer[512];
    if (!fgets(buffer, sizeof buffer, out_)) return "";
    std::string line(buffer);
    if (!line.empty() && line.back() == '\n') line.pop_back();
    return line;
  }
  void CloseInput() {
    close(in_);
    in_ = -1;
  }
  // The exit status, or minus the signal that ended it.
  int Wait() {
    int status = 0;
    waitpid(pid_, &status, 0);
    waited_ = true;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }
  void Kill() {
    kill(pid_, SIGKILL);
    Wait();
  }

 private:
  pid_t pid_ = -1;
  int in_ = -1;
  FILE* out_ = nullptr;
  bool waited_ = false;
};

}  // namespace parvenna::testing
