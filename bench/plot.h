// Plots of benchmark results, as SVG.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace bench {

struct Line {
  std::string name;
  std::string colour;
  std::vector<std::pair<double, double>> points;
};

struct Panel {
  std::string title;
  std::vector<Line> lines;
};

// Panels side by side with the same axes; y begins at 0. Throws std::runtime_error if the file cannot be written.
void writePlot(const std::string& file, const std::string& title, const std::string& xLabel, const std::string& yLabel,
               const std::vector<Panel>& panels);

}  // namespace bench
