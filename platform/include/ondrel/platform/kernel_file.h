// Contract: reading and writing through a handle that a host has opened.
//
// A handle stands for an open file or pipe and belongs to whoever opened it. On Linux it carries a file descriptor as
// its number, so the null handle is descriptor 0. It was opened for calls that wait until they are done. They move
// bytes between the buffer and the handle's own position.
//
//   ReadFile(handle, buffer, count, &read, nullptr)
//                      TRUE, and the number of bytes read, which may be fewer than `count`: what is there is given, and
//                      0 is the end of the data. FALSE, and the reason in GetLastError(); nothing was read. On Windows
//                      the end of a pipe that nobody writes any more is such a failure, ERROR_BROKEN_PIPE; off Windows
//                      it is the end of the data.
//   WriteFile(handle, buffer, count, &written, nullptr)
//                      TRUE, and the number of bytes written, which is `count` but for a handle that does not wait.
//                      FALSE, and the reason in GetLastError(); `written` bytes were written before.
//
// The reasons are ERROR_INVALID_HANDLE for a handle that is not open, ERROR_ACCESS_DENIED for one that is not open for
// this use, ERROR_NO_DATA for a pipe that nobody reads any more, which never ends the process, ERROR_DISK_FULL, and
// those of the system. Neither call raises an exception.
#pragma once

#include <ondrel/platform/os/kernel_file.h>
