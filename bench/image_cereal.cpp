// cereal, its binary archive: the maps as cereal writes and reads them.
#include <cereal/archives/binary.hpp>
#include <cereal/types/map.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/utility.hpp>
#include <cereal/types/vector.hpp>
#include <istream>
#include <ostream>

#include "image_peers.h"
#include "memory_buffers.h"

namespace ondrel::bench {

template <class Archive>
void serialize(Archive& archive, Record& record) {
  archive(record.cookie, record.name, record.icon, record.type, record.childQueries, record.menuScript, record.scripts,
          record.styleSheet, record.renderQueries);
}

namespace {

class Cereal : public ImagePeer {
 public:
  void Store(const Model& model) override {
    m_stored = std::make_unique<WriteBuffer>();
    std::ostream stream(m_stored.get());
    cereal::BinaryOutputArchive archive(stream);
    archive(model.nodes, model.dialogs);
  }

  std::string_view Stored() const override { return m_stored->Bytes(); }

  void Load(std::string_view bytes, Model& model) override {
    ReadBuffer buffer(bytes);
    std::istream stream(&buffer);
    cereal::BinaryInputArchive archive(stream);
    archive(model.nodes, model.dialogs);
    model.AddIndex();
  }

 private:
  std::unique_ptr<WriteBuffer> m_stored;
};

}  // namespace

std::unique_ptr<ImagePeer> MakeCereal() { return std::make_unique<Cereal>(); }

}  // namespace ondrel::bench
