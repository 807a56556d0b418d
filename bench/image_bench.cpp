// Loading and storing the object image, against what others would keep the same records with.
#include <string>

#include "forms.h"
#include "image_peers.h"
#include "measure.h"
#include "reference.h"

namespace ondrel::bench {
namespace {

using MakePeer = std::unique_ptr<ImagePeer> (*)();

void StoreOurs(benchmark::State& state) {
  CMMCObjectSet& set = ReferenceSet();
  Measure(state, std::make_unique<CMemFile>, [&](CMemFile& file) { StoreImage(set, file); });
  CMemFile file;
  StoreImage(set, file);
  const auto loaded = MakeSet();
  LoadImage(*loaded, file);
  RequireNone(Difference(ReferenceModel(), *loaded));
  state.counters["bytes"] = static_cast<double>(file.GetLength());
}

void LoadOurs(benchmark::State& state) {
  CMemFile file;
  StoreImage(ReferenceSet(), file);
  Measure(state, MakeSet, [&](CMMCObjectSet& set) { LoadImage(set, file); });
  const auto loaded = MakeSet();
  LoadImage(*loaded, file);
  RequireNone(Difference(ReferenceModel(), *loaded));
}

void RequireLoadedAlike(ImagePeer& peer) {
  Model loaded;
  peer.Load(peer.Stored(), loaded);
  RequireNone(Difference(ReferenceModel(), loaded));
}

void StorePeer(benchmark::State& state, MakePeer makePeer) {
  const Model& model = ReferenceModel();
  Measure(state, makePeer, [&](ImagePeer& peer) { peer.Store(model); });
  const auto peer = makePeer();
  peer->Store(model);
  RequireLoadedAlike(*peer);
  state.counters["bytes"] = static_cast<double>(peer->Stored().size());
}

void LoadPeer(benchmark::State& state, MakePeer makePeer) {
  const auto peer = makePeer();
  peer->Store(ReferenceModel());
  Measure(state, std::make_unique<Model>, [&](Model& model) { peer->Load(peer->Stored(), model); });
  RequireLoadedAlike(*peer);
}

void AddPeer(const std::string& name, MakePeer makePeer) {
  AddWork("load_image/" + name, ReferenceNodes(), 1, [=](benchmark::State& state) { LoadPeer(state, makePeer); });
  AddWork("store_image/" + name, ReferenceNodes(), 1, [=](benchmark::State& state) { StorePeer(state, makePeer); });
}

}  // namespace

void AddBenchmarks() {
  AddWork("load_image/ours", ReferenceNodes(), 1, LoadOurs);
  AddWork("store_image/ours", ReferenceNodes(), 1, StoreOurs);
  AddPeer("cereal", MakeCereal);
  AddPeer("Boost.Serialization", MakeBoost);
  AddPeer("protobuf", MakeProtobuf);
  AddPeer("FlatBuffers", MakeFlatBuffers);
}

}  // namespace ondrel::bench
