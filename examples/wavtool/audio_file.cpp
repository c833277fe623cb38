#include "audio_file.h"

#include <sndfile.h>

#include <algorithm>

#include "failure.h"

namespace wavtool {
namespace {

std::string nameOfFormat(int format) {
  SF_FORMAT_INFO info{};
  info.format = format & SF_FORMAT_SUBMASK;
  const bool known = sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof(info)) == 0 && info.name;
  return known ? info.name : "of an unknown kind";
}

constexpr int kWavFormats[] = {SF_FORMAT_PCM_U8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24,
                               SF_FORMAT_PCM_32, SF_FORMAT_FLOAT,  SF_FORMAT_DOUBLE};

int wavFormat(SampleType type) { return kWavFormats[static_cast<size_t>(type)]; }

SampleType typeOfFormat(int format) {
  switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_U8:
    case SF_FORMAT_PCM_S8:
      return SampleType::k8u;
    case SF_FORMAT_PCM_16:
    case SF_FORMAT_ULAW:
    case SF_FORMAT_ALAW:
    case SF_FORMAT_IMA_ADPCM:
    case SF_FORMAT_MS_ADPCM:
    case SF_FORMAT_GSM610:
    case SF_FORMAT_ALAC_16:
      return SampleType::k16s;
    case SF_FORMAT_PCM_24:
    case SF_FORMAT_ALAC_20:
    case SF_FORMAT_ALAC_24:
      return SampleType::k24s;
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_ALAC_32:
      return SampleType::k32s;
    case SF_FORMAT_DOUBLE:
      return SampleType::k64f;
    default:
      return SampleType::k32f;
  }
}

// Whether the file holds the samples exactly as a WAV file does.
bool holdsWavSamples(SNDFILE* file, int format) {
  const int container = format & SF_FORMAT_TYPEMASK;
  const bool likeWav = container == SF_FORMAT_WAV || container == SF_FORMAT_WAVEX || container == SF_FORMAT_W64 ||
                       container == SF_FORMAT_RF64;
  return likeWav && (format & SF_FORMAT_SUBMASK) == wavFormat(typeOfFormat(format)) &&
         sf_command(file, SFC_RAW_DATA_NEEDS_ENDSWAP, nullptr, 0) == SF_FALSE;
}

std::string reasonNotToOpen() {
  const std::string reason = sf_strerror(nullptr);
  // What libsndfile says of a sample rate that is 0 or, as an int, negative.
  return reason.find("SF_INFO") == std::string::npos ? reason : "its sample rate is 0 or too large";
}

SampleType decodedTo(SampleType type) { return isInteger(type) ? SampleType::k32s : type; }

}  // namespace

int bytesOf(SampleType type) {
  constexpr int kBytes[] = {1, 2, 3, 4, 4, 8};
  return kBytes[static_cast<size_t>(type)];
}

std::string nameOf(SampleType type) { return nameOfFormat(wavFormat(type)); }

SampleType parseSampleType(const std::string& word) {
  if (word == "8") return SampleType::k8u;
  if (word == "16") return SampleType::k16s;
  if (word == "24") return SampleType::k24s;
  if (word == "float") return SampleType::k32f;
  throw Failure("'" + word + "' is not a sample format: give --bits 8, 16, 24 or float");
}

void CloseAudio::operator()(SNDFILE* file) const { sf_close(file); }

AudioReader::AudioReader(const std::string& path) : path_(path), header_(readWavHeader(path)) {
  SF_INFO info{};
  if (header_.sizeAt > 0) {
    mended_ = std::make_unique<MendedFile>(path, header_);
    file_.reset(mended_->open(&info));
  } else {
    file_.reset(sf_open(path.c_str(), SFM_READ, &info));
  }
  if (!file_) throw Failure("cannot read " + path + ": " + reasonNotToOpen());
  if (info.frames < 1) throw Failure(path + " holds no samples");
  nameOfSamples_ = nameOfFormat(info.format);
  type_ = typeOfFormat(info.format);
  asInFile_ = holdsWavSamples(file_.get(), info.format);
  readsAs_ = asInFile_ ? type_ : decodedTo(type_);
  format_ = {info.samplerate, info.channels};
  frames_ = info.frames;
}

size_t AudioReader::read(void* samples, size_t frames) {
  const sf_count_t wanted = std::min(static_cast<sf_count_t>(frames), frames_ - done_);
  sf_count_t count;
  if (asInFile_) {
    const sf_count_t frame = bytesOf(type_) * format_.channels;
    count = sf_read_raw(file_.get(), samples, wanted * frame) / frame;
  } else if (readsAs_ == SampleType::k32s) {
    count = sf_readf_int(file_.get(), static_cast<int*>(samples), wanted);
  } else if (readsAs_ == SampleType::k32f) {
    count = sf_readf_float(file_.get(), static_cast<float*>(samples), wanted);
  } else {
    count = sf_readf_double(file_.get(), static_cast<double*>(samples), wanted);
  }
  done_ += count;
  if (count < wanted) throw Failure("cannot read all of " + path_);
  return static_cast<size_t>(count);
}

AudioWriter::AudioWriter(const std::string& path, AudioFormat format, SampleType type)
    : file_(path, "WAV"), type_(type) {
  SF_INFO info{};
  info.samplerate = format.rate;
  info.channels = format.channels;
  info.format = SF_FORMAT_WAV | wavFormat(type);
  audio_.reset(sf_open(file_.unfinished().c_str(), SFM_WRITE, &info));
  if (!audio_) file_.fail(sf_strerror(nullptr));
  // It would hold the time of day: the same command would never write the same file twice.
  sf_command(audio_.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
}

void AudioWriter::write(const void* samples, size_t count) {
  const auto bytes = static_cast<sf_count_t>(count) * bytesOf(type_);
  if (sf_write_raw(audio_.get(), samples, bytes) != bytes) file_.fail(sf_strerror(audio_.get()));
}

void AudioWriter::finish() {
  if (sf_close(audio_.release()) != 0) file_.fail("it could not be closed");
  file_.finish();
}

}  // namespace wavtool
