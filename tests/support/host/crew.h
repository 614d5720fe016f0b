// Threads that do their work at the same time.
#ifndef TESTS_SUPPORT_HOST_CREW_H
#define TESTS_SUPPORT_HOST_CREW_H

#include <atomic>
#include <barrier>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

inline constexpr int kCrew = 4;

// Runs work(0) to work(kCrew - 1), each on a thread of its own, all from the
// same moment on. Waits for the last.
inline void RunCrew(const std::function<void(int)>& work) {
  std::barrier start(kCrew);
  std::vector<std::jthread> threads;
  for (int i = 0; i < kCrew; ++i) {
    threads.emplace_back([&, i] {
      start.arrive_and_wait();
      work(i);
    });
  }
}

// Does it again and again for as long as it lives, with a number that grows.
class Meddler {
 public:
  explicit Meddler(std::function<void(unsigned)> meddle)
      : thread_([this, meddle = std::move(meddle)] {
          for (unsigned n = 0; !done_; ++n) {
            meddle(n);
            std::this_thread::yield();
          }
        }) {}
  Meddler(const Meddler&) = delete;
  Meddler& operator=(const Meddler&) = delete;
  ~Meddler() {
    done_ = true;
    thread_.join();
  }

 private:
  std::atomic<bool> done_ = false;
  std::thread thread_;
};

#endif
