// Pipeline - blocks converted by several threads, in order. Every thread takes a block, converts it, waits until it is
// its turn to write, and takes the next one: no queue, and as many blocks in memory as there are threads.
#include "tables/Pipeline.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>

namespace orvex::tool {

namespace {

class OrderedWork {
 public:
  OrderedWork(const BlockSource& source, const BlockSink& sink) : m_source(source), m_sink(sink) {}

  /// What one thread does.
  void Run(BlockConverter& converter) {
    Step step;
    while (Take(step)) {
      step.Try([&] {
        step.result = {};
        converter.Convert(step.block, step.result);
      });
      if (!Put(step)) return;
    }
  }

  void RethrowFailure() const {
    if (m_failure) std::rethrow_exception(m_failure);
  }

 private:
  /// A block on its way.
  struct Step {
    Block block;
    BlockResult result;
    std::uint64_t turn = 0;
    std::exception_ptr failure;

    /// Does something unless something failed before.
    template <class Action>
    void Try(const Action& action) {
      if (failure) return;
      try {
        action();
      } catch (...) {
        failure = std::current_exception();
      }
    }
  };

  bool Take(Step& step) {
    const std::lock_guard<std::mutex> lock(m_sourceMutex);
    bool more = !m_ended;
    if (more) step.Try([&] { more = m_source(step.block); });
    m_ended = !more || step.failure;
    if (more) step.turn = m_taken++;
    return more;
  }

  /// False when there is nothing more to do.
  bool Put(Step& step) {
    std::unique_lock<std::mutex> lock(m_sinkMutex);
    m_turnCame.wait(lock, [&] { return m_put == step.turn || m_failure; });
    if (m_failure) return false;
    step.Try([&] { m_sink(step.block, step.result); });
    m_failure = step.failure;
    ++m_put;
    m_turnCame.notify_all();
    return !m_failure;
  }

  const BlockSource& m_source;
  const BlockSink& m_sink;
  std::mutex m_sourceMutex, m_sinkMutex;
  std::condition_variable m_turnCame;
  bool m_ended = false;                  // guarded by the source's mutex
  std::uint64_t m_taken = 0, m_put = 0;  // by the source's and by the sink's
  std::exception_ptr m_failure;          // by the sink's: of the first block that failed
};

}  // namespace

void RunPipeline(const BlockSource& source, std::vector<BlockConverter>& converters, const BlockSink& sink) {
  OrderedWork work(source, sink);
  std::vector<std::thread> helpers;
  helpers.reserve(converters.size());
  try {
    for (std::size_t i = 1; i < converters.size(); ++i) {
      helpers.emplace_back([&work, &converter = converters[i]] { work.Run(converter); });
    }
  } catch (const std::system_error&) {
    // The system gives no more threads: those that there are do it.
  }
  work.Run(converters.front());
  for (std::thread& helper : helpers) helper.join();
  work.RethrowFailure();
}

}  // namespace orvex::tool
