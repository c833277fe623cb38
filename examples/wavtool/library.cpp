#include "library.h"

#include <cstdlib>
#include <system_error>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#include <link.h>
#endif

namespace wavtool {
namespace fs = std::filesystem;

namespace {

#if defined(_WIN32)

constexpr char kCoreName[] = "orpcore.dll", kSignalName[] = "orpsp.dll";

fs::path fileOfModule(void* module) {
  wchar_t name[32768];
  return fs::path(name,
                  name + GetModuleFileNameW(static_cast<HMODULE>(module), name, static_cast<DWORD>(std::size(name))));
}

fs::path programFolder() { return fileOfModule(nullptr).parent_path(); }

void* openFile(const fs::path& file) {
  return LoadLibraryExW(file.c_str(), nullptr, file.is_absolute() ? LOAD_WITH_ALTERED_SEARCH_PATH : 0);
}

std::string lastError() { return std::system_category().message(static_cast<int>(GetLastError())); }

void* symbol(void* module, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

#else

constexpr char kCoreName[] = "liborpcore.so.7", kSignalName[] = "liborpsp.so.7";

fs::path programFolder() {
  std::error_code ignored;
  return fs::read_symlink("/proc/self/exe", ignored).parent_path();
}

fs::path fileOfModule(void* module) {
  link_map* map = nullptr;
  return dlinfo(module, RTLD_DI_LINKMAP, &map) == 0 ? map->l_name : "";
}

void* openFile(const fs::path& file) { return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL); }

std::string lastError() {
  const char* text = dlerror();
  return text ? text : "unknown error";
}

void* symbol(void* module, const char* name) { return dlsym(module, name); }

#endif

}  // namespace

// Why orpSP could not be opened from `file`, or from where the system looks if that is a name alone; "" if it was.
std::string Library::open(const fs::path& file) {
  core_ = openFile(file.parent_path() / kCoreName);  // first: orpSP needs it and may look elsewhere
  signal_ = openFile(file);
  if (!signal_) return lastError();
  if (!symbol(signal_, "orpsGetLibVersion")) return "it is not orpSP";
  if (!core_) core_ = openFile(kCoreName);  // which came with orpSP from elsewhere
  return core_ ? "" : lastError();
}

Library::Library(const std::string& path) {
  const char* fromEnvironment = std::getenv("ORPSP_LIBRARY");
  const std::string wanted = !path.empty() ? path : fromEnvironment ? fromEnvironment : "";
  const fs::path here = programFolder();
  std::error_code ignored;
  fs::path file;
  if (!wanted.empty()) {
    file = fs::absolute(wanted);
    if (fs::is_directory(file, ignored)) file /= kSignalName;
    if (!fs::exists(file, ignored)) throw Failure("cannot open the library " + file.string() + ": no such file");
  } else if (fs::exists(here / kSignalName, ignored)) {
    file = here / kSignalName;
  } else if (fs::exists(here.parent_path() / "lib" / kSignalName, ignored)) {
    file = here.parent_path() / "lib" / kSignalName;
  }
  if (file.empty()) {
    if (const std::string reason = open(kSignalName); !reason.empty())
      throw Failure(std::string("no library ") + kSignalName +
                    " beside the program, in ../lib or where the system looks (" + reason +
                    "); --library PATH or ORPSP_LIBRARY says where it is");
  } else if (std::string reason = open(file); !reason.empty()) {
    const std::string name = file.string() + ": ";
    throw Failure("cannot open the library " + name + (reason.starts_with(name) ? reason.substr(name.size()) : reason));
  }
}

void* Library::find(const std::string& name) const {
  void* const address = symbol(name.starts_with("orps") ? signal_ : core_, name.c_str());
  if (!address) throw Failure("the library " + file().string() + " has no function " + name);
  return address;
}

fs::path Library::file() const { return fileOfModule(signal_); }

}  // namespace wavtool
