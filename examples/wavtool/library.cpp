#include "library.h"

#include <cstdlib>
#include <system_error>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace wavtool {
namespace fs = std::filesystem;

namespace {

#if defined(_WIN32)

constexpr char kCoreName[] = "orpcore.dll", kSignalName[] = "orpsp.dll";

fs::path fileOfModule(HMODULE module) {
  wchar_t name[32768];
  return fs::path(name, name + GetModuleFileNameW(module, name, static_cast<DWORD>(std::size(name))));
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

void* openFile(const fs::path& file) { return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL); }

std::string lastError() {
  const char* text = dlerror();
  return text ? text : "unknown error";
}

void* symbol(void* module, const char* name) { return dlsym(module, name); }

#endif

}  // namespace

void* Library::openModule(const fs::path& file) {
  void* const module = openFile(file);
  if (!module) reason_ = lastError();
  return module;
}

// Opens both modules from `folder`, or by name alone if it is empty.
bool Library::openIn(const fs::path& folder) {
  core_ = openModule(folder / kCoreName);
  if (core_) signal_ = openModule(folder / kSignalName);
  return core_ && signal_;
}

Library::Library(const std::string& path) {
  const char* fromEnvironment = std::getenv("ORPSP_LIBRARY");
  const fs::path wanted = !path.empty() ? path : fromEnvironment ? fromEnvironment : "";
  std::error_code ignored;
  if (!wanted.empty()) {
    const fs::path place = fs::absolute(wanted);
    if (!fs::exists(place, ignored)) throw Failure("cannot open the library " + wanted.string() + ": no such file");
    if (fs::is_directory(place, ignored)) {
      if (openIn(place)) return;
    } else {
      core_ = openModule(place.parent_path() / kCoreName);
      if (!core_) core_ = openModule(kCoreName);
      if (core_) signal_ = openModule(place);
      if (signal_) return;
    }
    throw Failure("cannot open the library " + wanted.string() + ": " + reason_);
  }
  const fs::path here = programFolder();
  for (const fs::path& folder : {here, here.parent_path() / "lib"}) {
    if (!fs::exists(folder / kSignalName, ignored)) continue;
    if (openIn(folder)) return;
    throw Failure("cannot open the library " + (folder / kSignalName).string() + ": " + reason_);
  }
  if (openIn({})) return;
  throw Failure(std::string("no library ") + kSignalName +
                " beside the program, in ../lib or where the system looks (" + reason_ +
                "); --library PATH or ORPSP_LIBRARY says where it is");
}

void* Library::find(const std::string& name) const {
  void* const address = symbol(name.starts_with("orps") ? signal_ : core_, name.c_str());
  if (!address) throw Failure("the library " + file().string() + " has no function " + name);
  return address;
}

fs::path Library::file() const {
#if defined(_WIN32)
  return fileOfModule(static_cast<HMODULE>(signal_));
#else
  Dl_info info;
  void* const any = dlsym(signal_, "orpsGetLibVersion");
  return any && dladdr(any, &info) ? fs::path(info.dli_fname) : fs::path(kSignalName);
#endif
}

}  // namespace wavtool
