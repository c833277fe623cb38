// What exports share that go through vectors once, checked for every line of the export tables.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>

#include "support/call.h"
#include "support/export_tables.h"
#include "support/lengths.h"

namespace orptest {
namespace {

constexpr int kGoodLength = 67, kBadLengths[] = {0, -1, INT_MIN};

// Calls `test(each, extra)`, once where there is no further argument.
template <class Test>
void forEachExtra(Test test) {
  for (const Export& each : sweptExports()) {
    for (const int extra : kExtras) {
      SCOPED_TRACE(testing::Message() << each.name << ", further arguments " << extra);
      test(each, extra);
      if (!each.hasExtras()) break;
    }
  }
}

#if defined(__linux__)
TEST(Sweep, WouldNotSurviveReadingBeyondAnArray) {
  const auto read = [](const Orp8u* address) { return *static_cast<const volatile Orp8u*>(address); };
  for (int i = 0; i < 4; ++i) {
    Guarded<Orp8u> array(67);
    const bool begins = reinterpret_cast<uintptr_t>(array.data()) % 4096 == 0;
    EXPECT_DEATH(read(begins ? array.data() - 1 : array.data() + array.size()), "");
  }
}
#endif

TEST(Sweep, NullPointersAreFoundFirstThenLengths) {
  forEachExtra([](const Export& each, int extra) {
    Call call(each, kGoodLength, extra);
    for (size_t k = 0; k <= each.arrays(); ++k) {
      call.setNull(k);
      for (const int len : {kGoodLength, 0, -1, INT_MIN}) {
        call.setLength(len);
        EXPECT_EQ(StsNullPtr, call()) << "pointer " << k << ", length " << len;
        EXPECT_TRUE(call.untouched()) << "pointer " << k << ", length " << len;
      }
    }
    call.setNull(each.arrays() + 1);
    for (const int len : kBadLengths) {
      call.setLength(len);
      EXPECT_EQ(StsBadSize, call()) << "length " << len;
      EXPECT_TRUE(call.untouched()) << "length " << len;
    }
  });
}

TEST(Sweep, RefusedArgumentsLeaveTheDestinationAlone) {
  forEachExtra([](const Export& each, int extra) {
    Call call(each, kGoodLength, extra);
    const OrpStatus status = call();
    EXPECT_TRUE(status >= StsOk || extra != kExtras[0]) << "status " << status;
    EXPECT_TRUE(status >= StsOk || call.untouched()) << "status " << status;
  });
}

TEST(Sweep, ResultsDoNotDependOnAddresses) {
  forEachExtra([](const Export& each, int extra) {
    if (each.is(kDependsOnAddress)) return;
    for (const Length& len : lengthsAroundWidths(each.itemBytes())) {
      Call aligned(each, len.value, extra);
      aligned.fill(1, Values::mixed);
      const OrpStatus status = aligned();
      for (const size_t misalignment : {size_t{1}, size_t{16}, size_t{60}}) {
        Call displaced(each, len.value, extra, misalignment);
        displaced.fill(1, Values::mixed);
        EXPECT_EQ(status, displaced()) << len << ", misaligned by " << misalignment;
        EXPECT_EQ(kSame, firstDifference(aligned, displaced)) << len << ", misaligned by " << misalignment;
      }
    }
  });
}

TEST(Sweep, SourcesMayBeDestinations) {
  forEachExtra([](const Export& each, int extra) {
    for (const Length& len : lengthsAroundWidths(each.itemBytes())) {
      for (const Sharing& sharing : Call(each, len.value, extra).sharings()) {
        Call separate(each, len.value, extra), shared(each, len.value, extra);
        separate.fill(2, Values::mixed, sharing);
        shared.fill(2, Values::mixed, sharing);
        shared.share(sharing);
        EXPECT_EQ(separate(), shared()) << len << ", arrays of the sources: " << testing::PrintToString(sharing);
        EXPECT_EQ(kSame, firstDifference(separate, shared))
            << len << ", arrays of the sources: " << testing::PrintToString(sharing);
      }
    }
  });
}

}  // namespace
}  // namespace orptest
