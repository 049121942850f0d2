// Stands before two calls of the system in a program that it is loaded into: what is given to fsync and
// rename below the folder QVA_TEST_FILES is written down in the file QVA_TEST_FILE_CALLS. Where
// QVA_TEST_FILES is set, registry and host database are the files that QVA_TEST_REGISTRY and
// QVA_TEST_DATABASE name, whoever starts the program.
#include <dlfcn.h>
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>

namespace {

bool IsWatched(const std::string& path) {
  const char* const folder = getenv("QVA_TEST_FILES");
  return folder && path.starts_with(folder);
}

void WriteDown(const std::string& call) {
  const char* const file = getenv("QVA_TEST_FILE_CALLS");
  const int log = file ? open(file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600) : -1;
  if (log < 0) return;
  [[maybe_unused]] const ssize_t written = write(log, call.data(), call.size());
  close(log);
}

void Redirect(const char* variable, const char* own) {
  if (const char* const file = getenv(own)) setenv(variable, file, 1);
}

__attribute__((constructor)) void Begin() {
  if (!getenv("QVA_TEST_FILES")) return;
  Redirect("QVA_VARNHOLT_REGISTRY", "QVA_TEST_REGISTRY");
  Redirect("QVA_HOST_DATABASE", "QVA_TEST_DATABASE");
}

template <class Function>
Function* Next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int fsync(int descriptor) {
  std::string path(4096, '\0');
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t length = readlink(link.c_str(), path.data(), path.size());
  path.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  if (IsWatched(path)) WriteDown("fsync " + path + "\n");
  static auto* const next = Next<int(int)>("fsync");
  return next(descriptor);
}

__attribute__((visibility("default"))) int rename(const char* from, const char* to) noexcept {
  if (IsWatched(from)) WriteDown(std::string("rename ") + from + " " + to + "\n");
  static auto* const next = Next<int(const char*, const char*)>("rename");
  return next(from, to);
}

}  // extern "C"
