#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#pragma GCC diagnostic pop

#include "benchmarks/peers/IniPeer.h"

namespace Helmsway::Benchmarks {
namespace {

using Tree = boost::property_tree::iptree;

class PropertyTreePeer final : public IIniPeer {
 public:
  bool Load(const std::string& path) override {
    try {
      tree_.clear();
      boost::property_tree::read_ini(path, tree_);
      return true;
    } catch (const boost::property_tree::ini_parser_error&) {
      return false;
    }
  }

  bool Find(const std::string& section, const std::string& key, std::string& value) override {
    const auto found = tree_.get_optional<std::string>(PathOf(section, key));
    if (found) value = *found;
    return found.has_value();
  }

  bool Save(const std::string& path, const std::string& section, const std::string& key,
            const std::string& value) override {
    if (!Load(path)) return false;
    try {
      tree_.put(PathOf(section, key), value);
      boost::property_tree::write_ini(path, tree_);
      return true;
    } catch (const boost::property_tree::ptree_error&) {
      return false;
    }
  }

 private:
  /// Names may hold the full stop that usually parts them.
  static Tree::path_type PathOf(const std::string& section, const std::string& key) {
    constexpr char separator = '\x1f';
    return {section + separator + key, separator};
  }

  Tree tree_;
};

}  // namespace

std::unique_ptr<IIniPeer> MakePropertyTreePeer() { return std::make_unique<PropertyTreePeer>(); }

}  // namespace Helmsway::Benchmarks
