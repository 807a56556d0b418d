// Contract: the archive that every binary form passes through, a framework archive that also carries byte vectors.
#pragma once

#include <vector>

#include <ondrel/platform/framework/archive.h>

/// An archive with byte vectors. A vector is stored as its byte count, a 32-bit little-endian number, and its bytes.
class VELLUM_API CVellum : public CArchive {
 public:
  using CArchive::CArchive;
  using CArchive::Read;
  using CArchive::Write;

  /// Stores a vector. Raises CArchiveException with cause readOnly on a loading archive, CInvalidArgException for a
  /// vector of 4 GiB or more; in both cases nothing of it has been stored.
  void Write(const std::vector<char>& bytes);
  void Write(const std::vector<unsigned char>& bytes);

  /// Loads a vector: its size and contents are replaced. Returns the byte count. Raises CArchiveException with cause
  /// writeOnly on a storing archive, endOfFile when the data ends before the count says; the vector then keeps its
  /// old contents. Memory is taken only as bytes arrive, never on the word of the count.
  unsigned int Read(std::vector<char>& bytes);
  unsigned int Read(std::vector<unsigned char>& bytes);

 protected:
  /// The count that stands before a vector of `size` bytes. Raises CInvalidArgException when it would not fit.
  static DWORD VectorCount(ULONGLONG size);
};
