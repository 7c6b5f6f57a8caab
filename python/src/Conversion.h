// Conversion - steps one behind the other over arrays of any size, by several threads.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "Points.h"
#include "Steps.h"

namespace orvex::python {

class Conversion {
 public:
  /// Makes each step once, so that bad parameters are refused here.
  explicit Conversion(std::vector<std::shared_ptr<Recipe>> recipes);
  ~Conversion();

  /// Converts `from` into `to`, which may be the same memory in the same layout, or else must not overlap it. The
  /// points are taken in blocks by up to `threads` threads, each with handles of its own. Any thread may call this at
  /// any time. When it throws, blocks that were already done stay done. Answers how many points could not be computed:
  /// they have NaN in both coordinates.
  std::size_t Convert(const Points& from, const Points& to, int threads);

 private:
  class Worker;
  class Job;
  class Lease;

  std::unique_ptr<Worker> Take();
  void GiveBack(std::unique_ptr<Worker> worker) noexcept;

  std::vector<std::shared_ptr<Recipe>> m_recipes;
  std::mutex m_mutex;
  std::vector<std::unique_ptr<Worker>> m_idle;
};

}  // namespace orvex::python
