// A shared library loaded at run time.
#pragma once

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace orptest {

class Module {
 public:
  explicit Module(const char* file) : handle_(open(file)) {}
  ~Module() {
    if (handle_) close(handle_);
  }
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  explicit operator bool() const { return handle_ != nullptr; }
  template <class Function>
  Function* symbol(const char* name) const {
    return reinterpret_cast<Function*>(find(handle_, name));
  }

  static bool isLoaded(const char* file);

 private:
#if defined(_WIN32)
  using Handle = HMODULE;
  static Handle open(const char* file) { return LoadLibraryA(file); }
  static void close(Handle handle) { FreeLibrary(handle); }
  static void* find(Handle handle, const char* name) { return reinterpret_cast<void*>(GetProcAddress(handle, name)); }
#else
  using Handle = void*;
  static Handle open(const char* file) { return dlopen(file, RTLD_NOW | RTLD_LOCAL); }
  static void close(Handle handle) { dlclose(handle); }
  static void* find(Handle handle, const char* name) { return dlsym(handle, name); }
#endif

  Handle handle_;
};

inline bool Module::isLoaded(const char* file) {
#if defined(_WIN32)
  return GetModuleHandleA(file) != nullptr;
#else
  void* const handle = dlopen(file, RTLD_NOW | RTLD_NOLOAD);
  if (handle) dlclose(handle);
  return handle != nullptr;
#endif
}

// The function `name` of `module`, with the type of its prototype in the public headers.
#define ORPTEST_SYMBOL(module, name) (module).symbol<decltype(::name)>(#name)

}  // namespace orptest
