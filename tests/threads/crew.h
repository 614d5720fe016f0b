// Threads that do their work at the same time.
#ifndef TESTS_THREADS_CREW_H
#define TESTS_THREADS_CREW_H

#include <atomic>
#include <barrier>
#include <functional>
#include <thread>
#include <vector>

inline constexpr int CREW = 4;

// Runs work(0) to work(CREW - 1), each on a thread of its own, all from the
// same moment on. Waits for the last.
inline void RunCrew(const std::function<void(int)>& work) {
  std::barrier start(CREW);
  std::vector<std::jthread> threads;
  for (int i = 0; i < CREW; ++i) {
    threads.emplace_back([&, i] {
      start.arrive_and_wait();
      work(i);
    });
  }
}

// Does it again and again on another thread for as long as this lives.
class Disturbance {
 public:
  explicit Disturbance(std::function<void()> disturb)
      : thread_([this, disturb = std::move(disturb)] {
          while (!done_) {
            disturb();
            std::this_thread::yield();
          }
        }) {}
  Disturbance(const Disturbance&) = delete;
  Disturbance& operator=(const Disturbance&) = delete;
  ~Disturbance() {
    done_ = true;
    thread_.join();
  }

 private:
  std::atomic<bool> done_ = false;
  std::thread thread_;
};

#endif
