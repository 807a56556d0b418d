// An icon in two sizes: platform handles as long as it comes from a file, and a copy of its images for the object
// image.
#pragma once

#include <ondrel/MMCObjectBitmap.h>
#include <ondrel/platform/framework.h>

/// One icon file of a definition: the large (32 x 32) and the small (16 x 16) image of the file's first icon, each as a
/// handle and as a colour and a mask bitmap. An icon that was loaded from an object image has the bitmaps only.
///
/// Colours are COLORREF values, 0x00BBGGRR. Movable, not copyable. One thread at a time, or only readers.
class ONDREL_API CMMCObjectIcon {
 public:
  /// The images of one size.
  class ONDREL_API CBitmapData {
   public:
    CBitmapData();
    CBitmapData(CBitmapData&& other) noexcept;
    virtual ~CBitmapData();

    CMMCObjectBitmap m_colour;  ///< As the platform reports it, 32 bits per pixel for ordinary icons.
    CMMCObjectBitmap m_mask;    ///< 1 bit per pixel; a set bit marks a transparent pixel.
  };

  CMMCObjectIcon();                                 ///< No handles, empty bitmaps.
  CMMCObjectIcon(CMMCObjectIcon&& other) noexcept;  ///< Takes the bitmaps and the handles.
  virtual ~CMMCObjectIcon();                        ///< Destroys the handles.

  /// Takes the first icon of a file. 0, or the platform's status: 0x80070002 for a missing file, 0x80070005 for one
  /// that may not be read, 0x80070714 for one without an icon, 0x8007000D for a damaged icon. After a failure the icon
  /// keeps what it was given before the failure.
  HRESULT Construct(CString path);

  /// The handle whose area is nearer to cx * cy pixels, the large one in a tie; null when there is none. The icon keeps
  /// ownership.
  HICON GetIcon(int cx, int cy) const;
  /// The geometry and bits of the large or small colour image, valid as long as the icon and unchanged by it. An icon
  /// from an object image has the bytes that were stored, which may be fewer than its geometry says; GetPixel looks.
  const tagBITMAP& GetColourBitmap(bool large) const;
  /// A copy of the colour image's geometry whose transparent pixels have the key colour and the others their own; all
  /// zero when the colour image has not 32 bits per pixel. Raises as CMMCObjectBitmap::Construct.
  CMMCObjectBitmap GetMaskedBitmap(bool large, DWORD colour) const;
  /// One pixel: the key colour where the mask is set, else the pixel of the colour image.
  DWORD GetPixel(bool large, int x, int y, DWORD colour) const;

  /// Stores the bitmaps large colour, large mask, small colour, small mask; nothing else. Raises the archive's
  /// exceptions.
  void Serialize(CVellum& archive) const;
  /// Loads the four bitmaps. What was read before an exception is kept.
  void Deserialize(CVellum& archive);

 private:
  friend class ondrel::MaskedDrawing;

  const CBitmapData& Images(bool large) const { return large ? m_large : m_small; }

  CBitmapData m_large;
  CBitmapData m_small;
  ondrel::platform::UniqueIcon m_largeIcon;
  ondrel::platform::UniqueIcon m_smallIcon;
};
