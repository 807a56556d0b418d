// The framework's image list: an owner of a platform image list.
#pragma once

#include <ondrel/platform/export.h>
#include <ondrel/platform/graphics.h>

/// Owns an image list handle. A default-made list has none (null) until Create or Attach.
class FRAMEWORK_API CImageList {
 public:
  CImageList() noexcept = default;
  ~CImageList();
  CImageList(const CImageList&) = delete;
  CImageList& operator=(const CImageList&) = delete;

  /// Makes an empty list of images of cx by cy pixels. `initial` and `grow` are counts of images. FALSE on failure.
  BOOL Create(int cx, int cy, UINT flags, int initial, int grow);
  BOOL Attach(HIMAGELIST list);  ///< Takes ownership; FALSE for null.
  HIMAGELIST Detach() noexcept;  ///< Gives ownership to the caller.
  BOOL DeleteImageList();

  HIMAGELIST GetSafeHandle() const noexcept { return m_list; }
  int GetImageCount() const;

 private:
  HIMAGELIST m_list = nullptr;
};
