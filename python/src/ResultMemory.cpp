// ResultMemory - memory of large result arrays, kept for the next ones.
#include "ResultMemory.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <new>

namespace py = pybind11;

namespace orvex::python {

namespace {

using Memory = std::unique_ptr<double[]>;

struct Piece {
  std::size_t size;  // doubles
  Memory memory;
};

class Kept {
 public:
  Memory Take(std::size_t size) {
    for (auto piece = m_pieces.begin(); piece != m_pieces.end(); ++piece) {
      if (piece->size != size) continue;
      Memory memory = std::move(piece->memory);
      m_total -= size;
      m_pieces.erase(piece);
      return memory;
    }
    return Memory(new double[size]);
  }

  void Keep(Piece piece) {
    const std::size_t size = piece.size;
    if (size > kMost) return;
    m_pieces.push_back(std::move(piece));
    m_total += size;
    for (; m_total > kMost; m_pieces.pop_front()) m_total -= m_pieces.front().size;
  }

 private:
  static constexpr std::size_t kMost = (64u << 20) / sizeof(double);

  std::deque<Piece> m_pieces;  // the oldest first
  std::size_t m_total = 0;
};

// Never destroyed: arrays may live until the interpreter ends, and longer.
Kept& KeptPieces() {
  static auto* const kept = new Kept;
  return *kept;
}

void GiveBack(void* pointer) {
  const std::unique_ptr<Piece> piece(static_cast<Piece*>(pointer));
  try {
    KeptPieces().Keep(std::move(*piece));
  } catch (const std::bad_alloc&) {
    // No room to keep it: it is freed.
  }
}

// Below this the C library reuses memory by itself.
constexpr std::size_t kLarge = (1u << 18) / sizeof(double);

}  // namespace

py::array_t<double> NewArray(const std::vector<py::ssize_t>& shape) {
  std::size_t size = 1;
  for (const py::ssize_t extent : shape) size *= static_cast<std::size_t>(extent);
  if (size < kLarge) return py::array_t<double>(shape);
  auto piece = std::make_unique<Piece>(Piece{size, KeptPieces().Take(size)});
  const double* const values = piece->memory.get();
  const py::capsule owner(piece.get(), GiveBack);
  piece.release();
  return py::array_t<double>(shape, values, owner);
}

}  // namespace orvex::python
