// Libraries that people would keep a definition with in a binary file, each set up to be as fast as it can be.
#pragma once

#include <memory>
#include <string_view>

#include "model.h"

namespace ondrel::bench {

class ImagePeer {
 public:
  ImagePeer() = default;
  virtual ~ImagePeer() = default;
  ImagePeer(const ImagePeer&) = delete;
  ImagePeer& operator=(const ImagePeer&) = delete;

  /// Stores a model in memory of the peer's own.
  virtual void Store(const Model& model) = 0;
  /// What was stored, until the next time.
  virtual std::string_view Stored() const = 0;
  /// Fills an empty model. Raises std::runtime_error, or what the library raises, for bytes that it refuses.
  virtual void Load(std::string_view bytes, Model& model) = 0;
};

std::unique_ptr<ImagePeer> MakeCereal();
std::unique_ptr<ImagePeer> MakeBoost();
std::unique_ptr<ImagePeer> MakeProtobuf();
std::unique_ptr<ImagePeer> MakeFlatBuffers();

}  // namespace ondrel::bench
