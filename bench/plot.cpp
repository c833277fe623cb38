#include "plot.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace bench {
namespace {

// In pixels.
constexpr double kPanelWidth = 330, kPanelHeight = 300, kGap = 30, kLeft = 62, kRight = 20, kTop = 84, kBottom = 56;

__attribute__((format(printf, 1, 2))) std::string format(const char* text, ...) {
  char line[512];
  va_list arguments;
  va_start(arguments, text);
  std::vsnprintf(line, sizeof(line), text, arguments);
  va_end(arguments);
  return line;
}

// 1, 2 or 5 times a power of ten, so that `range` has at most eight of them.
double niceStep(double range) {
  const double magnitude = std::pow(10, std::floor(std::log10(range / 8)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (range <= 8 * factor * magnitude) return factor * magnitude;
  }
  return 10 * magnitude;
}

std::string text(double x, double y, const char* style, const std::string& content) {
  return format("<text x=\"%.1f\" y=\"%.1f\" %s>", x, y, style) + content + "</text>\n";
}

struct Axes {
  double xLow, xHigh, yHigh, left;

  [[nodiscard]] double x(double value) const { return left + (value - xLow) / (xHigh - xLow) * kPanelWidth; }
  [[nodiscard]] double y(double value) const { return kTop + (1 - value / yHigh) * kPanelHeight; }
};

std::string drawAxes(const Axes& axes, double yStep, const Panel& panel, bool isFirst) {
  std::string svg =
      text(axes.left + kPanelWidth / 2, kTop - 12, R"(text-anchor="middle" font-weight="bold")", panel.title);
  for (double y = 0; y < axes.yHigh + yStep / 2; y += yStep) {
    svg += format("<line x1=\"%.1f\" x2=\"%.1f\" y1=\"%.1f\" y2=\"%.1f\" stroke=\"%s\"/>\n", axes.left,
                  axes.left + kPanelWidth, axes.y(y), axes.y(y), y == 0 ? "#444" : "#ddd");
    if (isFirst) svg += text(axes.left - 8, axes.y(y) + 4, R"(text-anchor="end")", format("%g", y));
  }
  for (double x = std::ceil(axes.xLow / 2) * 2; x <= axes.xHigh; x += 2) {
    svg += format("<line x1=\"%.1f\" x2=\"%.1f\" y1=\"%.1f\" y2=\"%.1f\" stroke=\"#444\"/>\n", axes.x(x), axes.x(x),
                  kTop + kPanelHeight, kTop + kPanelHeight + 5);
    svg += text(axes.x(x), kTop + kPanelHeight + 19, R"(text-anchor="middle")", format("%g", x));
  }
  return svg;
}

std::string drawLine(const Axes& axes, const Line& line) {
  std::string path, dots;
  for (const auto& [x, y] : line.points) {
    path += format("%.1f,%.1f ", axes.x(x), axes.y(y));
    dots += format("<circle cx=\"%.1f\" cy=\"%.1f\" r=\"2.6\"/>", axes.x(x), axes.y(y));
  }
  const char* const colour = line.colour.c_str();
  return format("<polyline fill=\"none\" stroke-width=\"2\" stroke=\"%s\" points=\"", colour) + path + "\"/>\n" +
         format("<g fill=\"%s\">", colour) + dots + "</g>\n";
}

}  // namespace

void writePlot(const std::string& file, const std::string& title, const std::string& xLabel, const std::string& yLabel,
               const std::vector<Panel>& panels) {
  Axes axes{1e9, -1e9, 0, kLeft};
  std::vector<Line> legend;
  for (const Panel& panel : panels) {
    for (const Line& line : panel.lines) {
      const auto isSame = [&](const Line& other) { return other.name == line.name; };
      if (std::none_of(legend.begin(), legend.end(), isSame)) legend.push_back(line);
      for (const auto& [x, y] : line.points) {
        axes.xLow = std::min(axes.xLow, x);
        axes.xHigh = std::max(axes.xHigh, x);
        axes.yHigh = std::max(axes.yHigh, y);
      }
    }
  }
  if (axes.xLow >= axes.xHigh || axes.yHigh <= 0) throw std::runtime_error("too few results for a plot");
  const double yStep = niceStep(axes.yHigh);
  axes.yHigh = std::ceil(axes.yHigh / yStep) * yStep;

  const auto count = static_cast<double>(panels.size());
  const double width = kLeft + count * kPanelWidth + (count - 1) * kGap + kRight,
               height = kTop + kPanelHeight + kBottom;
  std::string svg = format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" viewBox=\"0 0 %.0f %.0f\" "
      "font-family=\"Helvetica, Arial, sans-serif\" font-size=\"12\" fill=\"#222\">\n"
      "<rect width=\"100%%\" height=\"100%%\" fill=\"#fff\"/>\n",
      width, height, width, height);
  svg += text(kLeft, 26, R"(font-size="16" font-weight="bold")", title);
  double x = kLeft;
  for (const Line& line : legend) {
    svg += format("<line x1=\"%.1f\" x2=\"%.1f\" y1=\"45\" y2=\"45\" stroke-width=\"3\" stroke=\"%s\"/>\n", x, x + 26,
                  line.colour.c_str());
    svg += text(x + 33, 49, "", line.name);
    x += 60 + 7 * static_cast<double>(line.name.size());
  }
  for (const Panel& panel : panels) {
    svg += drawAxes(axes, yStep, panel, &panel == panels.data());
    for (const Line& line : panel.lines) svg += drawLine(axes, line);
    svg += text(axes.left + kPanelWidth / 2, kTop + kPanelHeight + 42, R"(text-anchor="middle")", xLabel);
    axes.left += kPanelWidth + kGap;
  }
  const double middle = kTop + kPanelHeight / 2;
  svg += text(18, middle, format("text-anchor=\"middle\" transform=\"rotate(-90 18 %.1f)\"", middle).c_str(), yLabel);
  svg += "</svg>\n";

  std::ofstream out(file);
  out << svg;
  if (!out.flush()) throw std::runtime_error("cannot write " + file);
}

}  // namespace bench
