#include "spectrum_plot.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "power_spectrum.h"

namespace wavtool {
namespace {

struct Box {
  int left, top, width, height;
  constexpr int right() const { return left + width; }
  constexpr int bottom() const { return top + height; }
};

constexpr int kWidth = 990, kHeight = 800;
constexpr Box kSpectrum{80, 92, 840, 300}, kSpectrogram{80, 470, 840, 270};
constexpr int kCell = 3;  // height of a row of the spectrogram
constexpr const char* kInks[] = {"#1b5fa7", "#d1432f", "#2c8a4b", "#8a4fa8",
                                 "#c7860a", "#138f9b", "#8c5a3c", "#555555"};

std::string format(const char* format, auto... values) {
  char text[256];
  std::snprintf(text, sizeof(text), format, values...);
  return text;
}

bool isUtf8(const std::string& text) {
  int missing = 0;  // bytes of the current character
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool continues = (byte & 0xC0) == 0x80;
    if (continues != (missing > 0) || byte >= 0xF8) return false;
    missing = continues ? missing - 1 : byte < 0xC0 ? 0 : byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
  }
  return missing == 0;
}

// File names may hold anything; XML may not.
std::string escaped(const std::string& text) {
  const bool plain = isUtf8(text);
  std::string safe;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '&')
      safe += "&amp;";
    else if (c == '<')
      safe += "&lt;";
    else if (c == '>')
      safe += "&gt;";
    else if (byte < 0x20 || byte == 0x7F || (byte >= 0x80 && !plain))
      safe += '?';
    else
      safe += c;
  }
  return safe;
}

// `more`: further attributes of the element, with a space before them.
std::string text(double x, double y, const std::string& what, const std::string& more = "") {
  return format("<text x=\"%.1f\" y=\"%.1f\"%s>", x, y, more.c_str()) + escaped(what) + "</text>\n";
}

constexpr char kRight[] = " text-anchor=\"end\"", kMiddle[] = " text-anchor=\"middle\"";

std::string line(double x1, double y1, double x2, double y2, const char* kind) {
  return format("<path class=\"%s\" d=\"M%.1f %.1fL%.1f %.1f\"/>\n", kind, x1, y1, x2, y2);
}

std::string frame(const Box& box) {
  return format("<rect class=\"frame\" x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\"/>\n", box.left, box.top, box.width,
                box.height);
}

// The least of 1, 2 and 5 times a power of ten that is at least `value`.
double roundStep(double value) {
  const double power = std::pow(10, std::floor(std::log10(value)));
  for (const double digit : {1, 2, 5})
    if (digit * power >= value * (1 - 1e-9)) return digit * power;
  return 10 * power;
}

// Frequencies from 20 Hz on, where there are any, to half the sample rate, each octave as wide as the others.
class FrequencyAxis {
 public:
  explicit FrequencyAxis(double rate) : high_(rate / 2), low_(std::min(20.0, high_ / 100)) {}

  double at(double part) const { return low_ * std::pow(high_ / low_, part); }  // part 0: the lowest, 1: the highest
  double partOf(double frequency) const { return std::log(frequency / low_) / std::log(high_ / low_); }

  // Level of the strongest frequency in each of equal parts of the axis; between frequencies that have a level where
  // there is none in a part. So a tone is as strong in the picture as it was measured.
  Levels resample(const Levels& levels, size_t parts) const {
    const double last = static_cast<double>(levels.size() - 1);
    const auto position = [&](double part) { return at(part / static_cast<double>(parts)) / high_ * last; };
    Levels result(parts);
    for (size_t i = 0; i < parts; ++i) {
      const double begin = position(static_cast<double>(i)), end = std::min(position(static_cast<double>(i + 1)), last);
      const auto from = levels.begin() + static_cast<std::ptrdiff_t>(std::ceil(begin));
      const auto to = levels.begin() + static_cast<std::ptrdiff_t>(std::floor(end)) + 1;
      if (from < to) {
        result[i] = *std::max_element(from, to);
      } else {
        const double center = (begin + end) / 2, below = std::floor(center);
        const auto k = static_cast<size_t>(below);
        result[i] = levels[k] + (center - below) * (levels[k + 1] - levels[k]);
      }
    }
    return result;
  }

  // Calls `tick` with every frequency of one significant digit and with its label: 1, 2 and 5 have one.
  void ticks(const auto& tick) const {
    for (double decade = std::pow(10, std::floor(std::log10(low_))); decade <= high_; decade *= 10)
      for (int digit = 1; digit < 10; ++digit) {
        const double frequency = digit * decade;
        if (frequency < low_ * (1 - 1e-9) || frequency > high_ * (1 + 1e-9)) continue;
        const bool labelled = digit == 1 || digit == 2 || digit == 5;
        const bool kilo = frequency >= 999.5;
        tick(frequency, labelled ? format(kilo ? "%gk" : "%g", kilo ? frequency / 1000 : frequency) : "");
      }
  }

 private:
  const double high_, low_;
};

struct Range {
  double bottom, top;
  double partOf(double level) const { return (std::clamp(level, bottom, top) - bottom) / (top - bottom); }
};

std::pair<double, double> extent(const std::vector<Levels>& rows) {
  double least = rows[0][0], most = least;
  for (const Levels& row : rows) {
    const auto [low, high] = std::minmax_element(row.begin(), row.end());
    least = std::min(least, *low), most = std::max(most, *high);
  }
  return {least, most};
}

// Upper end of a scale for levels up to `most`. Silence has full scale there, so that it lies at the lower end.
double topOf(double most, double above) {
  return PowerSpectrum::isSilence(most) ? 0 : 10 * std::ceil((most + above) / 10);
}

// In the margin on the right.
std::string legend(size_t channels) {
  const size_t shown = std::min(channels, std::size(kInks));
  const int x = kSpectrum.right() + 10, step = 20;
  int y = kSpectrum.top + 12;
  std::string svg = text(x, y, "channel");
  for (size_t channel = 0; channel < shown; ++channel) {
    y += step;
    svg += format("<path d=\"M%d %dh18\" stroke=\"%s\" stroke-width=\"3\"/>\n", x, y - 4, kInks[channel]);
    svg += text(x + 23, y, format("%zu", channel + 1));
  }
  if (channels > shown) svg += text(x, y + step, format("%zu more", channels - shown));
  return svg;
}

std::string drawSpectrum(const SpectrumPlot& plot, const FrequencyAxis& axis) {
  constexpr Box box = kSpectrum;
  std::vector<Levels> curves;
  for (const Levels& levels : plot.channels) curves.push_back(axis.resample(levels, box.width));
  const auto [least, most] = extent(curves);
  const double top = topOf(most, 2);
  const Range range{std::clamp(10 * std::floor(least / 10), top - 120, top - 60), top};
  const auto yOf = [&](double level) { return box.bottom() - box.height * range.partOf(level); };

  std::string svg = text(box.left, box.top - 10, plot.spectrumTitle, " class=\"heading\"");
  axis.ticks([&](double frequency, const std::string& label) {
    const double x = box.left + box.width * axis.partOf(frequency);
    svg += line(x, box.top, x, box.bottom(), label.empty() ? "faint" : "grid");
    svg += label.empty() ? "" : text(x, box.bottom() + 17, label, kMiddle);
  });
  for (double level = range.bottom; level <= range.top; level += 10) {
    svg += line(box.left, yOf(level), box.right(), yOf(level), "grid");
    svg += text(box.left - 7, yOf(level) + 4, format("%g", level), kRight);
  }
  svg += text(box.left + box.width / 2, box.bottom() + 36, "frequency in Hz", kMiddle);
  svg += text(0, 0, "level in dBFS",
              format(" text-anchor=\"middle\" transform=\"translate(26 %d) rotate(-90)\"", box.top + box.height / 2));
  for (size_t channel = 0; channel < curves.size(); ++channel) {
    svg += format("<polyline class=\"curve\" stroke=\"%s\" points=\"", kInks[channel % std::size(kInks)]);
    for (size_t i = 0; i < curves[channel].size(); ++i)
      svg += format("%s%.1f,%.1f", i == 0 ? "" : " ", box.left + static_cast<double>(i) + 0.5, yOf(curves[channel][i]));
    svg += "\"/>\n";
  }
  svg += frame(box);
  if (curves.size() > 1) svg += legend(curves.size());
  return svg;
}

// From dark to bright, so that it also reads in grey.
constexpr int kShades = 30;
std::string shade(int index) {
  constexpr double kStops[][3] = {{8, 10, 32},   {52, 24, 110},  {150, 36, 116},
                                  {225, 80, 70}, {250, 165, 50}, {255, 250, 190}};
  const double place = 5.0 * index / (kShades - 1);
  const int stop = std::min(static_cast<int>(place), 4);
  const auto mixed = [&](int part) {
    return static_cast<int>(std::lround(std::lerp(kStops[stop][part], kStops[stop + 1][part], place - stop)));
  };
  return format("#%02x%02x%02x", mixed(0), mixed(1), mixed(2));
}

// Cells of one shade make one path of horizontal strokes, in units of cells; neighbours of one shade are one stroke.
std::string drawCells(const std::vector<Levels>& columns, const Range& range) {
  constexpr Box box = kSpectrogram;
  const size_t rows = columns[0].size();
  const auto shadeOf = [&](size_t column, size_t row) {
    return std::min(static_cast<int>(kShades * range.partOf(columns[column][row])), kShades - 1);
  };
  std::string paths[kShades];
  for (size_t row = 0; row < rows; ++row)
    for (size_t begin = 0, end = 0; begin < columns.size(); begin = end) {
      const int own = shadeOf(begin, row);
      while (end < columns.size() && shadeOf(end, row) == own) ++end;
      paths[own] += format("M%zu %zuh%zu", begin, rows - row, end - begin);
    }
  std::string svg =
      format("<g transform=\"translate(%d %.1f) scale(%.6f %d)\" shape-rendering=\"crispEdges\">\n", box.left,
             box.top - kCell / 2.0, static_cast<double>(box.width) / static_cast<double>(columns.size()), kCell);
  svg += format("<path stroke=\"%s\" stroke-width=\"%zu\" d=\"M0 %.1fh%zu\"/>\n", shade(0).c_str(), rows,
                static_cast<double>(rows + 1) / 2, columns.size());
  for (int index = 1; index < kShades; ++index)
    if (!paths[index].empty()) svg += "<path stroke=\"" + shade(index) + "\" d=\"" + paths[index] + "\"/>\n";
  return svg + "</g>\n";
}

std::string drawShades(const Range& range) {
  constexpr Box box{kSpectrogram.right() + 10, kSpectrogram.top, 12, kSpectrogram.height};
  constexpr int step = box.height / kShades;
  std::string svg;
  for (int index = 0; index < kShades; ++index)
    svg += format("<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" fill=\"%s\"/>\n", box.left,
                  box.bottom() - (index + 1) * step, box.width, step, shade(index).c_str());
  svg += frame(box);
  for (double level = range.bottom; level <= range.top; level += 20)
    svg += text(box.right() + 5, box.bottom() - box.height * range.partOf(level) + 4, format("%g", level));
  return svg + text(box.left - 2, box.top - 10, "dBFS");
}

std::string drawTimes(double seconds) {
  constexpr Box box = kSpectrogram;
  const bool minutes = seconds > 300;
  const double length = minutes ? seconds / 60 : seconds, step = roundStep(length / 12);
  std::string svg =
      text(box.left + box.width / 2, box.bottom() + 36, minutes ? "time in minutes" : "time in seconds", kMiddle);
  for (int i = 0; i * step <= length * (1 + 1e-9); ++i) {
    const double x = box.left + box.width * (i * step / length);
    svg += line(x, box.bottom(), x, box.bottom() + 4, "tick");
    svg += text(x, box.bottom() + 17, format("%g", i * step), kMiddle);
  }
  return svg;
}

std::string drawSpectrogram(const SpectrumPlot& plot, const FrequencyAxis& axis) {
  constexpr Box box = kSpectrogram;
  std::vector<Levels> columns;
  for (const Levels& levels : plot.moments) columns.push_back(axis.resample(levels, box.height / kCell));
  const double top = topOf(extent(columns).second, 0);
  const Range range{top - 80, top};
  std::string svg = text(box.left, box.top - 10, plot.spectrogramTitle, " class=\"heading\"");
  svg += drawCells(columns, range) + drawShades(range) + drawTimes(plot.seconds);
  axis.ticks([&](double frequency, const std::string& label) {
    if (label.empty()) return;
    const double y = box.bottom() - box.height * axis.partOf(frequency);
    svg += line(box.left - 4, y, box.left, y, "tick") + text(box.left - 7, y + 4, label, kRight);
  });
  svg += text(0, 0, "frequency in Hz",
              format(" text-anchor=\"middle\" transform=\"translate(26 %d) rotate(-90)\"", box.top + box.height / 2));
  return svg + frame(box);
}

}  // namespace

std::string svgOf(const SpectrumPlot& plot) {
  const FrequencyAxis axis(plot.rate);
  // A long file name gets smaller letters.
  const double size = std::min(19.0, 1500.0 / static_cast<double>(plot.title.size() + 1));
  std::string svg =
      format("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %d %d\" width=\"%d\" height=\"%d\" ", kWidth,
             kHeight, kWidth, kHeight);
  svg +=
      "font-family=\"sans-serif\" font-size=\"12\" fill=\"#222\">\n"
      "<style>path,polyline,.frame{fill:none}.heading{font-weight:bold;font-size:13px}"
      ".grid{stroke:#ccc}.faint{stroke:#eee}.tick,.frame{stroke:#444}.curve{stroke-width:1.3;stroke-linejoin:round}"
      "</style>\n";
  svg += format("<rect width=\"%d\" height=\"%d\" fill=\"#fff\"/>\n", kWidth, kHeight);
  svg += text(kSpectrum.left, 30, plot.title, format(" font-size=\"%.1f\" font-weight=\"bold\"", size));
  svg += text(kSpectrum.left, 52, plot.subtitle);
  return svg + drawSpectrum(plot, axis) + drawSpectrogram(plot, axis) + "</svg>\n";
}

}  // namespace wavtool
