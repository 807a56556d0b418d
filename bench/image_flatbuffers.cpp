// FlatBuffers, verified before it is read, as bytes from anywhere have to be.
#include <flatbuffers/flatbuffers.h>

#include <limits>
#include <stdexcept>

#include "image_peers.h"
#include "records_generated.h"

namespace ondrel::bench {
namespace {

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;
using flatbuffers::Vector;

Offset<Vector<std::uint16_t>> StoreText(FlatBufferBuilder& builder, const std::u16string& text) {
  return builder.CreateVector(reinterpret_cast<const std::uint16_t*>(text.data()), text.size());
}

Offset<Vector<Offset<flat::Query>>> StoreQueries(FlatBufferBuilder& builder, const std::vector<Query>& queries,
                                                 std::vector<Offset<flat::Query>>& offsets) {
  offsets.clear();
  for (const auto& [tag, file] : queries) {
    offsets.push_back(flat::CreateQuery(builder, StoreText(builder, tag), file));
  }
  return builder.CreateVector(offsets);
}

std::vector<Offset<flat::Record>> StoreRecords(FlatBufferBuilder& builder, const Store& store) {
  std::vector<Offset<flat::Record>> stored;
  stored.reserve(store.size());
  std::vector<Offset<flat::Query>> queries;
  for (const auto& [key, record] : store) {
    const auto name = StoreText(builder, record.name);
    const auto childQueries = StoreQueries(builder, record.childQueries, queries);
    const auto scripts =
        builder.CreateVector(reinterpret_cast<const std::int64_t*>(record.scripts.data()), record.scripts.size());
    const auto renderQueries = record.renderQueries.empty() ? 0 : StoreQueries(builder, record.renderQueries, queries);
    stored.push_back(flat::CreateRecord(builder, key.first, key.second, name, record.icon, record.type, childQueries,
                                        record.menuScript, scripts, record.styleSheet, renderQueries));
  }
  return stored;
}

std::u16string LoadText(const Vector<std::uint16_t>* text) {
  return text == nullptr ? std::u16string()
                         : std::u16string(reinterpret_cast<const char16_t*>(text->data()), text->size());
}

std::vector<Query> LoadQueries(const Vector<Offset<flat::Query>>* queries) {
  std::vector<Query> loaded;
  if (queries == nullptr) return loaded;
  loaded.reserve(queries->size());
  for (const flat::Query* const query : *queries) loaded.emplace_back(LoadText(query->tag()), query->file());
  return loaded;
}

Record LoadRecord(const flat::Record& record) {
  Record loaded;
  loaded.cookie = record.cookie();
  loaded.name = LoadText(record.name());
  loaded.icon = record.icon();
  loaded.type = record.type();
  loaded.childQueries = LoadQueries(record.child_queries());
  loaded.menuScript = record.menu_script();
  if (record.scripts() != nullptr) loaded.scripts.assign(record.scripts()->begin(), record.scripts()->end());
  loaded.styleSheet = record.style_sheet();
  loaded.renderQueries = LoadQueries(record.render_queries());
  return loaded;
}

class FlatBuffers : public ImagePeer {
 public:
  void Store(const Model& model) override {
    m_builder = std::make_unique<FlatBufferBuilder>(1 << 20);
    const auto nodes = StoreRecords(*m_builder, model.nodes);
    const auto dialogs = StoreRecords(*m_builder, model.dialogs);
    m_builder->Finish(flat::CreateDefinitionDirect(*m_builder, &nodes, &dialogs));
  }

  std::string_view Stored() const override {
    return {reinterpret_cast<const char*>(m_builder->GetBufferPointer()), m_builder->GetSize()};
  }

  void Load(std::string_view bytes, Model& model) override {
    const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    constexpr flatbuffers::uoffset_t kDepth = 64;
    flatbuffers::Verifier verifier(data, bytes.size(), kDepth, std::numeric_limits<flatbuffers::uoffset_t>::max());
    if (!flat::VerifyDefinitionBuffer(verifier)) throw std::runtime_error("FlatBuffers refuses what it has stored");
    const flat::Definition* const definition = flat::GetDefinition(data);
    for (const flat::Record* const node : *definition->nodes()) model.AddNode(node->parent(), LoadRecord(*node));
    for (const flat::Record* const dialog : *definition->dialogs()) model.AddDialog(LoadRecord(*dialog));
  }

 private:
  std::unique_ptr<FlatBufferBuilder> m_builder;
};

}  // namespace

std::unique_ptr<ImagePeer> MakeFlatBuffers() { return std::make_unique<FlatBuffers>(); }

}  // namespace ondrel::bench
