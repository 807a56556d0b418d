// The framework's owner of an image list.
#include <ondrel/platform/framework/image_list.h>

#include <utility>

CImageList::~CImageList() { DeleteImageList(); }

BOOL CImageList::Create(int cx, int cy, UINT flags, int initial, int grow) {
  return Attach(ImageList_Create(cx, cy, flags, initial, grow));
}

BOOL CImageList::Attach(HIMAGELIST list) {
  if (list == nullptr) return FALSE;
  if (list != m_list) DeleteImageList();
  m_list = list;
  return TRUE;
}

HIMAGELIST CImageList::Detach() noexcept { return std::exchange(m_list, nullptr); }

BOOL CImageList::DeleteImageList() {
  const HIMAGELIST list = Detach();
  return list != nullptr ? ImageList_Destroy(list) : FALSE;
}

int CImageList::GetImageCount() const { return ImageList_GetImageCount(m_list); }
