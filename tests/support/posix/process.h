// Limits and rights of this process that a test takes away for a while, and what else only these systems have.
#pragma once

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <filesystem>
#include <stdexcept>

namespace ondrel::test {

/// Lowers a limit of the process. What goes beyond RLIMIT_FSIZE ends the process unless PrepareProgram() was called.
class ResourceLimit {
 public:
  ResourceLimit(__rlimit_resource resource, rlim_t value) : m_resource(resource) {
    if (getrlimit(resource, &m_before) != 0) throw std::runtime_error("cannot read a limit");
    rlimit lowered = m_before;
    lowered.rlim_cur = value;
    if (setrlimit(resource, &lowered) != 0) throw std::runtime_error("cannot lower a limit");
  }
  ~ResourceLimit() { setrlimit(m_resource, &m_before); }
  ResourceLimit(const ResourceLimit&) = delete;
  ResourceLimit& operator=(const ResourceLimit&) = delete;

 private:
  __rlimit_resource m_resource;
  rlimit m_before{};
};

/// Gives up the superuser's rights, so that permissions count; changes nothing for any other user.
class Unprivileged {
 public:
  Unprivileged() {
    constexpr uid_t kNobody = 65534;
    if (m_before == 0 && seteuid(kNobody) != 0) throw std::runtime_error("cannot give up the superuser's rights");
  }
  ~Unprivileged() {
    if (m_before == 0 && seteuid(0) != 0) std::terminate();
  }
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;

 private:
  const uid_t m_before = geteuid();
};

/// Whether the user of the test can run a program as a user who owns nothing.
inline bool CanDropPrivileges() { return geteuid() == 0; }

/// Makes a pipe with a name. Raises std::runtime_error.
inline void MakeNamedPipe(const std::filesystem::path& path) {
  if (mkfifo(path.c_str(), 0666) != 0) throw std::runtime_error("cannot make the pipe " + path.string());
}

}  // namespace ondrel::test
