#include "benchmarks/peers/IniPeer.h"

namespace Helmsway::Benchmarks {

const std::vector<PeerKind>& Peers() {
  static const std::vector<PeerKind> peers = {
      {"SimpleIni", MakeSimpleIniPeer, true},
      {"GKeyFile", MakeKeyFilePeer, true},
      {"inih", MakeInihPeer, false},
      {"iniparser", MakeIniparserPeer, true},
      {"QSettings", MakeSettingsPeer, true, true},
      {"PropertyTree", MakePropertyTreePeer, true},
  };
  return peers;
}

}  // namespace Helmsway::Benchmarks
