// Pipes between the program and a command that it runs.
#pragma once

namespace ondrel::platform {

/// Owns a file descriptor, or none.
class PipeEnd {
 public:
  PipeEnd() = default;
  ~PipeEnd() { Close(); }
  PipeEnd(const PipeEnd&) = delete;
  PipeEnd& operator=(const PipeEnd&) = delete;

  int Get() const { return m_descriptor; }  ///< -1 for none
  bool IsOpen() const { return m_descriptor != -1; }
  void Take(int descriptor);
  int Release();  ///< Whose it is now.
  void Close();

 private:
  int m_descriptor = -1;
};

/// Both ends are closed in programs that are started. Neither is one of the standard streams, even where the program
/// has none of these: handing it on as one would close another.
struct ShellPipe {
  PipeEnd reading;
  PipeEnd writing;

  /// Opens the pipe. False, with the reason in errno.
  bool Open();
};

/// Has transfers over an open end do what they can at once, and not wait. False, with the reason in errno.
bool StopWaiting(const PipeEnd& end);

}  // namespace ondrel::platform
