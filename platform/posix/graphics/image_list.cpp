// Image lists: icons of one size, named by their index.
#include <new>
#include <utility>
#include <vector>

#include "graphics/icon_object.h"
#include "icons/icon_limits.h"

namespace ondrel::platform {

/// Its images keep 32 bits of colour and a mask, which is all that the flags of a list can ask for.
struct ImageListObject {
  LONG width;
  LONG height;
  std::vector<IconImage> images;
};

}  // namespace ondrel::platform

using ondrel::platform::IconImage;
using ondrel::platform::IconObject;
using ondrel::platform::ImageListObject;

namespace {

constexpr int kAppend = -1;

bool HasIndex(const ImageListObject& list, int index) {
  return index >= 0 && static_cast<std::size_t>(index) < list.images.size();
}

template <class Result>
Result Fail(DWORD code, Result failure) {
  SetLastError(code);
  return failure;
}

}  // namespace

HIMAGELIST ImageList_Create(int width, int height, UINT, int, int) {
  // The list grows with its images: no memory is taken on the word of the counts.
  const bool isPossible =
      width > 0 && height > 0 && static_cast<LONGLONG>(width) * height <= ondrel::platform::kMostIconPixels;
  if (!isPossible) return Fail<HIMAGELIST>(ERROR_INVALID_PARAMETER, nullptr);
  auto* const list = new (std::nothrow) ImageListObject{width, height, {}};
  return list != nullptr ? list : Fail<HIMAGELIST>(ERROR_OUTOFMEMORY, nullptr);
}

BOOL ImageList_Destroy(HIMAGELIST list) {
  if (list == nullptr) return Fail(ERROR_INVALID_HANDLE, FALSE);
  delete list;
  return TRUE;
}

int ImageList_GetImageCount(HIMAGELIST list) { return list == nullptr ? 0 : static_cast<int>(list->images.size()); }

int ImageList_ReplaceIcon(HIMAGELIST list, int index, HICON icon) {
  constexpr int kFailed = -1;
  if (list == nullptr || icon == nullptr) return Fail(ERROR_INVALID_HANDLE, kFailed);
  if (index != kAppend && !HasIndex(*list, index)) return Fail(ERROR_INVALID_PARAMETER, kFailed);
  try {
    IconImage image = ScaleIconImage(icon->image, list->width, list->height);
    if (index != kAppend) {
      list->images[static_cast<std::size_t>(index)] = std::move(image);
      return index;
    }
    list->images.push_back(std::move(image));
    return static_cast<int>(list->images.size()) - 1;
  } catch (const std::bad_alloc&) {
    return Fail(ERROR_OUTOFMEMORY, kFailed);
  }
}

HICON ImageList_GetIcon(HIMAGELIST list, int index, UINT) {
  if (list == nullptr) return Fail<HICON>(ERROR_INVALID_HANDLE, nullptr);
  if (!HasIndex(*list, index)) return Fail<HICON>(ERROR_INVALID_PARAMETER, nullptr);
  try {
    return new IconObject{list->images[static_cast<std::size_t>(index)]};
  } catch (const std::bad_alloc&) {
    return Fail<HICON>(ERROR_OUTOFMEMORY, nullptr);
  }
}
