// orpSP, opened at run time by name. Its functions are found by name and typed by the public headers, so the program
// needs nothing of the library to start. It stays open until the program ends.
#pragma once

#include <filesystem>
#include <string>

#include "failure.h"
#include "orpcore.h"
#include "orpsp.h"

namespace wavtool {

class Library {
 public:
  // `path`: the library's file or the folder that holds it. If it is empty: the environment variable ORPSP_LIBRARY,
  // else beside the program, else ../lib, else wherever the system looks.
  explicit Library(const std::string& path);

  // Address of an exported function of orpSP ("orps...") or of orpcore.
  void* find(const std::string& name) const;

  // The file that was opened.
  std::filesystem::path file() const;

 private:
  std::string open(const std::filesystem::path& file);

  void *core_ = nullptr, *signal_ = nullptr;
};

// A function of the library. Calls that answer an OrpStatus throw a Failure on an error.
template <class Pointer>
class Function;

template <class Result, class... Arguments>
class Function<Result (*)(Arguments...)> {
 public:
  Function(const Library& library, const char* name)
      : name_(name), call_(reinterpret_cast<Result (*)(Arguments...)>(library.find(name))) {}

  Result operator()(Arguments... arguments) const {
    if constexpr (std::is_same_v<Result, OrpStatus>) {
      const OrpStatus status = call_(arguments...);
      if (status < 0) throw Failure(std::string(name_) + " failed with status " + std::to_string(status));
      return status;
    } else {
      return call_(arguments...);
    }
  }

 private:
  const char* name_;
  Result (*call_)(Arguments...);
};

// Member `name` of a struct whose member `library` stands before it: the function of that name.
#define WAVTOOL_FUNCTION(name) \
  Function<decltype(&::name)> name { library, #name }

}  // namespace wavtool
