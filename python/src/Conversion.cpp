// Conversion - steps one behind the other over arrays of any size, by several threads.
#include "Conversion.h"

#include <algorithm>
#include <atomic>
#include <cfloat>
#include <exception>
#include <new>
#include <system_error>
#include <thread>

namespace orvex::python {

namespace {

// Points that go through all steps before the next are fetched: 16 KB, which stays in the nearest caches, and enough
// for the cost of the library's calls not to count.
constexpr std::size_t kBlock = 4096;

/// Whether the library can put results there: in a layout of its own, and without losing what may have to be read
/// again.
bool CanHold(const Points& to, const Points& from) {
  const auto apart = [&from](const double* first) { return first != from.x.first && first != from.y.first; };
  return (to.AreColumns() || to.AreRecords()) && apart(to.x.first) && apart(to.y.first);
}

}  // namespace

/// The steps and the block of one thread.
class Conversion::Worker {
 public:
  explicit Worker(const std::vector<std::shared_ptr<Recipe>>& recipes) : m_own(2 * kBlock) {
    for (const auto& recipe : recipes) m_steps.push_back(recipe->Make());
  }

  /// Converts at most a block; answers how many points could not be computed.
  std::size_t Convert(const Points& from, const Points& to) {
    if (CanHold(to, from)) return ConvertInto(Block(to), from);
    const Block own = OwnBlock(to.AreRecords(), to.size);
    const std::size_t missing = ConvertInto(own, from);
    Copy(own.All(), to);
    return missing;
  }

 private:
  /// Memory of this thread's for a few points.
  Block OwnBlock(bool records, std::size_t count) {
    double* const first = m_own.data();
    return Block(records ? Points{{first, 2}, {first + 1, 2}, count} : Points{{first, 1}, {first + kBlock, 1}, count});
  }

  std::size_t ConvertInto(const Block& to, const Points& from) {
    const bool sameLayout = to.AreRecords() ? from.AreRecords() : from.AreColumns();
    if (!sameLayout) Copy(from, to.All());
    try {
      Run(sameLayout ? Block(from) : to, to);
    } catch (const PointRefused&) {
      Copy(from, to.All());
      for (std::size_t i = 0; i < to.Size(); ++i) RunAlone(to.One(i));
    }
    return Unmark(to);
  }

  void Run(const Block& from, const Block& to) {
    if (m_steps.empty()) Copy(from, to);
    for (const auto& step : m_steps) step->Convert(step == m_steps.front() ? from : to, to);
  }

  void RunAlone(const Block& point) {
    try {
      Run(point, point);
    } catch (const PointRefused&) {
      point.X(0) = point.Y(0) = DBL_MAX;
    }
  }

  std::vector<std::unique_ptr<Step>> m_steps;
  std::vector<double> m_own;
};

/// A worker taken from those that are idle, for as long as the lease lives.
class Conversion::Lease {
 public:
  explicit Lease(Conversion& owner) : m_owner(owner), m_worker(owner.Take()) {}
  ~Lease() { m_owner.GiveBack(std::move(m_worker)); }
  Lease(const Lease&) = delete;
  Lease& operator=(const Lease&) = delete;
  Worker* operator->() const { return m_worker.get(); }

 private:
  Conversion& m_owner;
  std::unique_ptr<Worker> m_worker;
};

/// One call, shared by its threads: each fetches the next block until there is none or one of them has failed.
class Conversion::Job {
 public:
  Job(Conversion& owner, const Points& from, const Points& to) : m_owner(owner), m_from(from), m_to(to) {}

  void Work() noexcept {
    try {
      const Lease worker(m_owner);
      for (;;) {
        const std::size_t first = m_next.fetch_add(kBlock, std::memory_order_relaxed);
        if (first >= m_from.size || m_failed.load(std::memory_order_relaxed)) return;
        const std::size_t count = std::min(kBlock, m_from.size - first);
        m_missing += worker->Convert(m_from.Part(first, count), m_to.Part(first, count));
      }
    } catch (...) {
      const std::lock_guard lock(m_mutex);
      if (!m_failed.exchange(true)) m_failure = std::current_exception();
    }
  }

  /// After all threads have ended: how many points could not be computed.
  std::size_t Finish() const {
    if (m_failure) std::rethrow_exception(m_failure);
    return m_missing;
  }

 private:
  Conversion& m_owner;
  const Points& m_from;
  const Points& m_to;
  std::atomic<std::size_t> m_next{0};
  std::atomic<std::size_t> m_missing{0};
  std::atomic<bool> m_failed{false};
  std::mutex m_mutex;
  std::exception_ptr m_failure;
};

Conversion::Conversion(std::vector<std::shared_ptr<Recipe>> recipes) : m_recipes(std::move(recipes)) {
  GiveBack(Take());
}

Conversion::~Conversion() = default;

// Neither waits: a process that was forked while another thread had the lock finds it taken for good.
std::unique_ptr<Conversion::Worker> Conversion::Take() {
  {
    const std::unique_lock lock(m_mutex, std::try_to_lock);
    if (lock && !m_idle.empty()) {
      auto worker = std::move(m_idle.back());
      m_idle.pop_back();
      return worker;
    }
  }
  return std::make_unique<Worker>(m_recipes);
}

void Conversion::GiveBack(std::unique_ptr<Worker> worker) noexcept {
  const std::unique_lock lock(m_mutex, std::try_to_lock);
  if (!lock) return;
  try {
    m_idle.push_back(std::move(worker));
  } catch (const std::bad_alloc&) {
    // No room to keep it: the next call makes another.
  }
}

std::size_t Conversion::Convert(const Points& from, const Points& to, int threads) {
  Job job(*this, from, to);
  const std::size_t blocks = (from.size + kBlock - 1) / kBlock;
  const std::size_t wanted = std::min(static_cast<std::size_t>(threads), blocks);
  std::vector<std::thread> helpers;
  helpers.reserve(wanted);
  for (std::size_t i = 1; i < wanted; ++i) {
    try {
      helpers.emplace_back([&job] { job.Work(); });
    } catch (const std::system_error&) {
      break;  // the system gives no more threads: those that there are do the work
    }
  }
  job.Work();
  for (std::thread& helper : helpers) helper.join();
  return job.Finish();
}

}  // namespace orvex::python
