#include "press/pdf/layers.h"

#include "formats/sentences.h"
#include "press/pages/content.h"
#include "press/pdf/object_depth.h"

#include <set>
#include <stdexcept>
#include <vector>

namespace Press {
namespace {

std::vector<QPDFObjectHandle> layersIn(QPDFObjectHandle list) {
  std::vector<QPDFObjectHandle> layers;
  if (!list.isArray()) return layers;
  std::set<QPDFObjGen> seen;
  for (QPDFObjectHandle item : list.getArrayAsVector())
    if (item.isIndirect() && item.isDictionary() && seen.insert(item.getObjGen()).second) layers.push_back(item);
  return layers;
}

std::set<QPDFObjGen> namedIn(QPDFObjectHandle list) {
  std::set<QPDFObjGen> named;
  for (const QPDFObjectHandle& layer : layersIn(list)) named.insert(layer.getObjGen());
  return named;
}

// A document's default layer visibility, ignoring the viewer's settings.
class LayerStates {
 public:
  explicit LayerStates(QPDFObjectHandle configuration)
      : areOff(configuration.getKeyIfDict("/BaseState").isNameAndEquals("/OFF")),
        on(namedIn(configuration.getKeyIfDict("/ON"))),
        off(namedIn(configuration.getKeyIfDict("/OFF"))) {}

  bool isSeen(const QPDFObjectHandle& layer) const {
    if (off.contains(layer.getObjGen())) return false;
    return !areOff || on.contains(layer.getObjGen());
  }

 private:
  bool areOff;
  std::set<QPDFObjGen> on, off;
};

void append(QPDFObjectHandle dictionary, const char* key, const QPDFObjectHandle& item) {
  QPDFObjectHandle list = dictionary.getKey(key);
  if (!list.isArray()) list = dictionary.replaceKeyAndGetNew(key, QPDFObjectHandle::newArray());
  list.appendItem(item);
}

}  // namespace

void takeLayers(QPDF& from, QPDF& to) {
  QPDFObjectHandle theirs = from.getTrailer().getKeyIfDict("/Root").getKeyIfDict("/OCProperties");
  const std::vector<QPDFObjectHandle> layers = layersIn(theirs.getKeyIfDict("/OCGs"));
  if (layers.empty()) return;
  const LayerStates states(theirs.getKeyIfDict("/D"));
  QPDFObjectHandle ours = dictionaryIn(to.getTrailer().getKey("/Root"), "/OCProperties");
  QPDFObjectHandle configuration = dictionaryIn(ours, "/D");
  for (const QPDFObjectHandle& layer : layers) {
    if (isNestedTooDeeply(layer)) throw std::runtime_error(Formats::sentence("its layers are nested too deeply"));
    QPDFObjectHandle copy = to.copyForeignObject(layer);
    append(ours, "/OCGs", copy);
    // Some readers identify layers by their entries, and merge layers with equal names.
    copy.replaceKey("/KilnLayer", QPDFObjectHandle::newInteger(ours.getKey("/OCGs").getArrayNItems()));
    append(configuration, states.isSeen(layer) ? "/ON" : "/OFF", copy);
  }
}

}  // namespace Press
