// What a user did wrong or a machine lacks, in one line; main prints it and exits with a nonzero status.
#pragma once

#include <stdexcept>

namespace wavtool {

struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace wavtool
