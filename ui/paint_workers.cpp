#include "ui/paint_workers.h"

#include <algorithm>

namespace parvenna::ui {

PaintWorkers::PaintWorkers() {
  const int cores = static_cast<int>(std::thread::hardware_concurrency());
  const int extra = std::clamp(cores - 1, 0, 3);
  for (int i = 0; i < extra; ++i) threads_.emplace_back([this, i] { Serve(i + 1); });
}

PaintWorkers::~PaintWorkers() {
  {
    std::lock_guard lock(mutex_);
    stop_ = true;
  }
  wake_.notify_all();
  for (std::thread& t : threads_) t.join();
}

void PaintWorkers::Run(int jobs, const std::function<void(int, int)>& work) {
  if (jobs <= 0) return;
  if (threads_.empty() || jobs == 1) {
    for (int job = 0; job < jobs; ++job) work(job, 0);
    return;
  }
  {
    std::lock_guard lock(mutex_);
    work_ = &work;
    jobs_ = jobs;
    next_ = 0;
    busy_ = Width();
    ++round_;
  }
  wake_.notify_all();
  Work(0);
  std::unique_lock lock(mutex_);
  done_.wait(lock, [this] { return busy_ == 0; });
  work_ = nullptr;
}

void PaintWorkers::Work(int worker) {
  for (;;) {
    int job;
    {
      std::lock_guard lock(mutex_);
      if (next_ >= jobs_) break;
      job = next_++;
    }
    (*work_)(job, worker);
  }
  std::lock_guard lock(mutex_);
  if (--busy_ == 0) done_.notify_all();
}

void PaintWorkers::Serve(int worker) {
  unsigned seen = 0;
  for (;;) {
    {
      std::unique_lock lock(mutex_);
      wake_.wait(lock, [&] { return stop_ || round_ != seen; });
      if (stop_) return;
      seen = round_;
    }
    Work(worker);
  }
}

}  // namespace parvenna::ui
