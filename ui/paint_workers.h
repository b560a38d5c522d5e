#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace parvenna::ui {

// Threads that paint the bands of a large frame at once, each into its own
// rows of the picture, from a view that does not change meanwhile: the
// calling thread waits in Run until every band is done. The threads are kept
// from frame to frame, so that each keeps the fonts it has loaded.
class PaintWorkers {
 public:
  // Threads besides the caller's: one less than the machine's cores, at
  // most three; none on a machine of one core.
  PaintWorkers();
  ~PaintWorkers();
  PaintWorkers(const PaintWorkers&) = delete;
  PaintWorkers& operator=(const PaintWorkers&) = delete;

  // How many run a job at once, the caller included.
  int Width() const { return static_cast<int>(threads_.size()) + 1; }
  // Runs work(job, worker) for every job from 0 to jobs - 1, each once, on
  // the threads and the caller; worker, from 0 to Width() - 1, tells which
  // thread runs it. Returns when all are done.
  void Run(int jobs, const std::function<void(int job, int worker)>& work);

 private:
  void Serve(int worker);
  // Takes jobs until none is left.
  void Work(int worker);

  std::vector<std::thread> threads_;
  std::mutex mutex_;
  std::condition_variable wake_, done_;
  const std::function<void(int, int)>* work_ = nullptr;
  int jobs_ = 0, next_ = 0, busy_ = 0;
  unsigned round_ = 0;  // grows with each Run, so that a thread takes part once
  bool stop_ = false;
};

}  // namespace parvenna::ui
