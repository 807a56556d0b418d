// Protocol buffers, as their guide has it for large data: a run of small messages, each behind its length, through one
// message that is used again and again, so that nothing is allocated but once.
#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/io/zero_copy_stream_impl_lite.h>
#include <google/protobuf/util/delimited_message_util.h>

#include <limits>
#include <stdexcept>

#include "image_peers.h"
#include "records.pb.h"

namespace ondrel::bench {
namespace {

using google::protobuf::RepeatedPtrField;
using google::protobuf::io::CodedInputStream;
using google::protobuf::io::CodedOutputStream;

std::u16string LoadText(const std::string& bytes) {
  std::u16string text(bytes.size() / sizeof(char16_t), u'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * sizeof(char16_t));
  return text;
}

void StoreText(const std::u16string& text, std::string& bytes) {
  bytes.assign(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
}

void StoreQueries(const std::vector<Query>& queries, RepeatedPtrField<proto::Query>& stored) {
  for (const auto& [tag, file] : queries) {
    proto::Query& query = *stored.Add();
    StoreText(tag, *query.mutable_tag());
    query.set_file(file);
  }
}

std::vector<Query> LoadQueries(const RepeatedPtrField<proto::Query>& queries) {
  std::vector<Query> loaded;
  loaded.reserve(static_cast<std::size_t>(queries.size()));
  for (const proto::Query& query : queries) loaded.emplace_back(LoadText(query.tag()), query.file());
  return loaded;
}

void StoreRecord(const Key& key, const Record& record, proto::Record& stored) {
  stored.Clear();
  stored.set_parent(key.first);
  stored.set_cookie(key.second);
  StoreText(record.name, *stored.mutable_name());
  stored.set_icon(record.icon);
  stored.set_type(record.type);
  StoreQueries(record.childQueries, *stored.mutable_child_queries());
  stored.set_menu_script(record.menuScript);
  stored.mutable_scripts()->Add(record.scripts.begin(), record.scripts.end());
  stored.set_style_sheet(record.styleSheet);
  StoreQueries(record.renderQueries, *stored.mutable_render_queries());
}

Record LoadRecord(const proto::Record& record) {
  Record loaded;
  loaded.cookie = record.cookie();
  loaded.name = LoadText(record.name());
  loaded.icon = record.icon();
  loaded.type = record.type();
  loaded.childQueries = LoadQueries(record.child_queries());
  loaded.menuScript = record.menu_script();
  loaded.scripts.assign(record.scripts().begin(), record.scripts().end());
  loaded.styleSheet = record.style_sheet();
  loaded.renderQueries = LoadQueries(record.render_queries());
  return loaded;
}

void StoreRecords(const Store& store, CodedOutputStream& stream, proto::Record& message) {
  stream.WriteVarint64(store.size());
  for (const auto& [key, record] : store) {
    StoreRecord(key, record, message);
    if (!google::protobuf::util::SerializeDelimitedToCodedStream(message, &stream)) {
      throw std::runtime_error("protobuf does not store a record");
    }
  }
}

template <class Add>
void LoadRecords(CodedInputStream& stream, proto::Record& message, const Add& add) {
  std::uint64_t left = 0;
  if (!stream.ReadVarint64(&left)) throw std::runtime_error("protobuf finds no count");
  for (; left > 0; --left) {
    std::uint32_t length = 0;
    message.Clear();
    bool isRead = stream.ReadVarint32(&length);
    const auto limit = stream.PushLimit(static_cast<int>(length));
    isRead = isRead && message.MergeFromCodedStream(&stream) && stream.ConsumedEntireMessage();
    stream.PopLimit(limit);
    if (!isRead) throw std::runtime_error("protobuf does not load what it has stored");
    add(message);
  }
}

class Protobuf : public ImagePeer {
 public:
  void Store(const Model& model) override {
    m_stored.clear();
    google::protobuf::io::StringOutputStream output(&m_stored);
    CodedOutputStream stream(&output);
    proto::Record message;
    StoreRecords(model.nodes, stream, message);
    StoreRecords(model.dialogs, stream, message);
  }

  std::string_view Stored() const override { return m_stored; }

  void Load(std::string_view bytes, Model& model) override {
    CodedInputStream stream(reinterpret_cast<const std::uint8_t*>(bytes.data()), static_cast<int>(bytes.size()));
    proto::Record message;
    LoadRecords(stream, message, [&](const proto::Record& node) { model.AddNode(node.parent(), LoadRecord(node)); });
    LoadRecords(stream, message, [&](const proto::Record& dialog) { model.AddDialog(LoadRecord(dialog)); });
  }

 private:
  std::string m_stored;
};

}  // namespace

std::unique_ptr<ImagePeer> MakeProtobuf() { return std::make_unique<Protobuf>(); }

}  // namespace ondrel::bench
