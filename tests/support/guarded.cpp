#include "support/guarded.h"

#include <array>
#include <atomic>
#include <bit>
#include <mutex>
#include <new>

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/mman.h>
#endif

namespace orptest {
namespace {

constexpr size_t kPage = 4096;

#if defined(_WIN32)
unsigned char* map(size_t bytes) {
  return static_cast<unsigned char*>(VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
}
void unmap(unsigned char* address, size_t) { VirtualFree(address, 0, MEM_RELEASE); }
bool forbid(unsigned char* page) {
  DWORD before;
  return VirtualProtect(page, kPage, PAGE_NOACCESS, &before) != 0;
}
#else
unsigned char* map(size_t bytes) {
  void* const address = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return address == MAP_FAILED ? nullptr : static_cast<unsigned char*>(address);
}
void unmap(unsigned char* address, size_t bytes) { munmap(address, bytes); }
bool forbid(unsigned char* page) { return mprotect(page, kPage, PROT_NONE) == 0; }
#endif

// Unused pages by the logarithm of their size: a mapping costs more than most calls. Large ones go back to the system.
constexpr size_t kLargestKept = size_t{1} << 20;
std::mutex mutex;
std::array<std::vector<unsigned char*>, 21> kept;
static_assert(kLargestKept >> 20 == 1);

}  // namespace

Pages takePages(size_t bytes) {
  Pages pages{nullptr, (bytes + kPage - 1) / kPage * kPage};
  if (pages.bytes <= kLargestKept) {
    pages.bytes = std::bit_ceil(pages.bytes);
    const std::lock_guard lock(mutex);
    auto& unused = kept[static_cast<size_t>(std::countr_zero(pages.bytes))];
    if (!unused.empty()) {
      pages.begin = unused.back();
      unused.pop_back();
      return pages;
    }
  }
  unsigned char* const mapped = map(pages.bytes + 2 * kPage);
  if (!mapped || !forbid(mapped) || !forbid(mapped + kPage + pages.bytes)) throw std::bad_alloc();
  pages.begin = mapped + kPage;
  return pages;
}

void giveBack(const Pages& pages) {
  if (pages.bytes > kLargestKept) {
    unmap(pages.begin - kPage, pages.bytes + 2 * kPage);
    return;
  }
  const std::lock_guard lock(mutex);
  kept[static_cast<size_t>(std::countr_zero(pages.bytes))].push_back(pages.begin);
}

bool nextBeginsAtPage() {
  static std::atomic<unsigned> arrays = 0;
  return arrays++ % 4 == 3;
}

}  // namespace orptest
