#include "transfer.h"

#include <cstddef>
#include <cstdio>
#include <vector>

#include "converter.h"
#include "levels.h"
#include "not_finite.h"

namespace wavtool {
namespace {

constexpr size_t kBlockFrames = 4096;

long long printable(int64_t count) { return count; }

}  // namespace

void transfer(const Library& library, AudioReader& input, const std::string& output, const Transfer& job,
              Stopwatch whole) {
  const AudioFormat format = input.format();
  const auto channels = static_cast<size_t>(format.channels);
  const size_t capacity = kBlockFrames * channels;
  Converter converter(library, capacity);
  AudioWriter writer(output, format, job.type);

  std::vector<std::byte> read(capacity * static_cast<size_t>(bytesOf(input.readsAs())));
  std::vector<std::byte> written(capacity * static_cast<size_t>(bytesOf(job.type)));
  std::vector<double> block(capacity);
  Level before, after;
  int64_t total = 0, counted = 0, notFinite = 0;
  Stopwatch working;
  while (const size_t count = input.read(read.data(), kBlockFrames) * channels) {
    const auto samples = std::span(block).first(count);
    working.start();
    converter.decode(input.readsAs(), read.data(), samples);
    working.stop();
    notFinite += zeroNotFinite(samples);
    before.add(samples);
    counted += job.count(samples);
    working.start();
    if (job.work) job.work(samples);
    converter.encode(samples, job.type, job.rounding, written.data());
    working.stop();
    writer.write(written.data(), count);
    converter.decode(job.type, written.data(), samples);
    after.add(samples);
    total += static_cast<int64_t>(count);
  }
  writer.finish();
  whole.stop();

  const double length = static_cast<double>(total) / (1.0 * format.rate * format.channels);
  std::printf("%s: %.2f s, %d channel(s), %d Hz, %s, %s\n", input.path().c_str(), length, format.channels, format.rate,
              input.nameOfSamples().c_str(), before.text().c_str());
  std::printf("%s: %s, %s\n", output.c_str(), nameOf(job.type).c_str(), after.text().c_str());
  std::printf("%s: %lld of %lld samples%s\n", job.counted.c_str(), printable(counted), printable(total),
              job.remark.c_str());
  printNotFinite(notFinite);
  if (job.report) job.report();
  printSpeed(job.done.c_str(), length, working, whole);
}

}  // namespace wavtool
