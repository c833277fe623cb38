// A number that tells whether results are the same bits: FNV-1a [Fowler, Noll, Vo: RFC 9923].
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

namespace orptest {

class Digest {
 public:
  template <class T>
  void add(const T& value) {
    unsigned char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof(T));
    for (const unsigned char byte : bytes) hash_ = (hash_ ^ byte) * 0x100000001B3u;
  }
  template <class T>
  void add(const std::vector<T>& values) {
    for (const T& value : values) add(value);
  }
  uint64_t value() const { return hash_; }

 private:
  uint64_t hash_ = 0xCBF29CE484222325u;
};

}  // namespace orptest
