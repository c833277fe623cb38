// The transforms that the FFT programs run: those of the library, at each of its widths, and FFTW's.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

namespace bench::fft {

enum class Layout { kInterleaved, kSplit, kReal };  // complex pairs, two planes, real with a spectrum in CCS

struct Shape {
  Layout layout;
  bool inPlace, inverse;
  int order;
};

struct Release {
  void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Block = std::unique_ptr<T[], Release>;

template <class T>
Block<T> allocate(size_t count) {  // on a cache line; the bytes that follow belong to nobody
  void* const memory = std::aligned_alloc(64, (count * sizeof(T) + 63) / 64 * 64);
  if (!memory) throw std::bad_alloc();
  return Block<T>(static_cast<T*>(memory));
}

// What all contestants read and write. The second array of each is the imaginary plane of split data. Transforms in
// place work on the destination.
template <class T>
struct Arrays {
  explicit Arrays(const Shape& shape) : planes(shape.layout == Layout::kSplit ? 2 : 1) {
    const size_t points = size_t{1} << shape.order;
    const bool isReal = shape.layout == Layout::kReal;
    const size_t real = isReal ? points : 2 * points / planes, spectrum = isReal ? points + 2 : real;
    sourceCount = shape.inverse ? spectrum : real;
    destinationCount = shape.inverse ? real : spectrum;
    for (size_t i = 0; i < planes; ++i) {
      source[i] = allocate<T>(sourceCount);
      destination[i] = allocate<T>(shape.inPlace ? spectrum : destinationCount);
    }
  }

  size_t planes;
  size_t sourceCount, destinationCount;  // elements of each plane
  Block<T> source[2], destination[2];
};

// Runs one transform a number of times; a call of it costs far more than one of the transform's function.
using Work = std::function<void(int times)>;

// The library as an application sees it that limits the features of the processor before it loads it. Each width is a
// module of its own, so that all of them can be measured in one process.
class Library {
 public:
  Library(const std::string& file, int bits);  // an empty name: the library of this build

  [[nodiscard]] int bits() const { return bits_; }
  template <class T>
  [[nodiscard]] Work transform(const Shape& shape, const Arrays<T>& arrays) const;
  template <class T>
  [[nodiscard]] Work init(Layout layout, int order) const;  // makes and frees specifications

 private:
  template <class F>
  [[nodiscard]] F* find(const char* name) const;

  int bits_;
  std::shared_ptr<void> module_;
};

// Planning destroys what the arrays hold.
template <class T>
Work fftwTransform(const Shape& shape, const Arrays<T>& arrays, bool patient);

// Plans that FFTW found before, in two files (one for each precision) whose names begin with `prefix`.
void readWisdom(const std::string& prefix);
void writeWisdom(const std::string& prefix);

}  // namespace bench::fft
