#pragma once

#include <memory>
#include <string>
#include <vector>

namespace Helmsway::Benchmarks {

/// Another library for configuration files, used as its own documentation shows.
class IIniPeer {
 public:
  virtual ~IIniPeer() = default;

  /// Makes sure that the next load parses, where the library itself keeps files that it has parsed.
  virtual void Forget(const std::string& /*path*/) {}
  /// Reads and parses the file, in place of what was there. False when the library gives it up.
  virtual bool Load(const std::string& path) = 0;
  /// Gives the text of a key that was loaded, as far as the library gives texts. False for none.
  virtual bool Find(const std::string& section, const std::string& key, std::string& value) = 0;
  /// One whole save: read the file, change the key, put the file in place. False when the library can't.
  virtual bool Save(const std::string& path, const std::string& section, const std::string& key,
                    const std::string& value) = 0;
};

struct PeerKind {
  const char* name;
  std::unique_ptr<IIniPeer> (*make)();
  bool writes;
  bool keepsParsed = false;  ///< needs `Forget` for a load to parse
};

/// All of them.
const std::vector<PeerKind>& Peers();

std::unique_ptr<IIniPeer> MakeSimpleIniPeer();
std::unique_ptr<IIniPeer> MakeKeyFilePeer();
std::unique_ptr<IIniPeer> MakeInihPeer();
std::unique_ptr<IIniPeer> MakeIniparserPeer();
std::unique_ptr<IIniPeer> MakeSettingsPeer();
std::unique_ptr<IIniPeer> MakePropertyTreePeer();

}  // namespace Helmsway::Benchmarks
