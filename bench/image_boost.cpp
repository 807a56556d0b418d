// Boost.Serialization, its binary archive: without the header, without class information and tracking, which nothing
// here needs, and text as one run of bytes.
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/array_wrapper.hpp>
#include <boost/serialization/map.hpp>
#include <boost/serialization/split_free.hpp>
#include <boost/serialization/utility.hpp>
#include <boost/serialization/vector.hpp>

#include "image_peers.h"
#include "memory_buffers.h"

BOOST_CLASS_IMPLEMENTATION(std::u16string, boost::serialization::object_serializable)
BOOST_CLASS_IMPLEMENTATION(ondrel::bench::Record, boost::serialization::object_serializable)
BOOST_CLASS_IMPLEMENTATION(ondrel::bench::Query, boost::serialization::object_serializable)
BOOST_CLASS_IMPLEMENTATION(ondrel::bench::Store::value_type, boost::serialization::object_serializable)
BOOST_CLASS_IMPLEMENTATION(ondrel::bench::Key, boost::serialization::object_serializable)
BOOST_CLASS_IMPLEMENTATION(ondrel::bench::Store, boost::serialization::object_serializable)
BOOST_CLASS_IMPLEMENTATION(std::vector<ondrel::bench::Query>, boost::serialization::object_serializable)
BOOST_CLASS_IMPLEMENTATION(std::vector<__int64>, boost::serialization::object_serializable)
BOOST_CLASS_TRACKING(std::u16string, boost::serialization::track_never)
BOOST_CLASS_TRACKING(ondrel::bench::Record, boost::serialization::track_never)
BOOST_CLASS_TRACKING(ondrel::bench::Query, boost::serialization::track_never)
BOOST_CLASS_TRACKING(ondrel::bench::Store::value_type, boost::serialization::track_never)
BOOST_CLASS_TRACKING(ondrel::bench::Key, boost::serialization::track_never)
BOOST_CLASS_TRACKING(ondrel::bench::Store, boost::serialization::track_never)
BOOST_CLASS_TRACKING(std::vector<ondrel::bench::Query>, boost::serialization::track_never)
BOOST_CLASS_TRACKING(std::vector<__int64>, boost::serialization::track_never)

namespace boost::serialization {

template <class Archive>
void save(Archive& archive, const std::u16string& text, unsigned) {
  const std::size_t length = text.size();
  archive << length;
  archive.save_binary(text.data(), length * sizeof(char16_t));
}

template <class Archive>
void load(Archive& archive, std::u16string& text, unsigned) {
  std::size_t length = 0;
  archive >> length;
  text.resize(length);
  archive.load_binary(text.data(), length * sizeof(char16_t));
}

template <class Archive>
void serialize(Archive& archive, std::u16string& text, unsigned version) {
  split_free(archive, text, version);
}

template <class Archive>
void serialize(Archive& archive, ondrel::bench::Record& record, unsigned) {
  archive& record.cookie& record.name& record.icon& record.type& record.childQueries& record.menuScript& record
      .scripts& record.styleSheet& record.renderQueries;
}

}  // namespace boost::serialization

namespace ondrel::bench {
namespace {

constexpr unsigned kFlags = boost::archive::no_header | boost::archive::no_codecvt | boost::archive::no_tracking;

class Boost : public ImagePeer {
 public:
  void Store(const Model& model) override {
    m_stored = std::make_unique<WriteBuffer>();
    boost::archive::binary_oarchive archive(*m_stored, kFlags);
    archive << model.nodes << model.dialogs;
  }

  std::string_view Stored() const override { return m_stored->Bytes(); }

  void Load(std::string_view bytes, Model& model) override {
    ReadBuffer buffer(bytes);
    boost::archive::binary_iarchive archive(buffer, kFlags);
    archive >> model.nodes >> model.dialogs;
    model.AddIndex();
  }

 private:
  std::unique_ptr<WriteBuffer> m_stored;
};

}  // namespace

std::unique_ptr<ImagePeer> MakeBoost() { return std::make_unique<Boost>(); }

}  // namespace ondrel::bench
