#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "bench/instrument/MachineDescription.h"

namespace Helmsway {

/// A rack as the operator puts it on a stage position. It has places enough for tips to be taken and put back.
struct Rack {
  const PlateType* plate = nullptr;
  const TipType* tip = nullptr;  ///< which tips are in it; null for none that can be told
};

/// What stands where: heads in the slots of the nests, racks on stage positions, an ejected head. A head that is
/// neither here nor on the module is in its case. All pointers are into the description.
class Stage {
 public:
  /// Empty; `machine` must outlive this.
  explicit Stage(const MachineDescription& machine) : slots_(machine.slots.size(), nullptr) {}

  /// By the number of the slot in the description; null when it is empty.
  const HeadType* HeadIn(std::size_t slot) const { return slots_.at(slot); }
  bool InSomeSlot(const HeadType& head) const;
  void Put(std::size_t slot, const HeadType& head) { slots_.at(slot) = &head; }
  void Empty(std::size_t slot) { slots_.at(slot) = nullptr; }
  /// Takes the head out of wherever it stands.
  void TakeAway(const HeadType& head);

  /// By the name of the stage position; null when there is none.
  const Rack* RackOn(const std::string& place) const;
  void PutRack(const std::string& place, const Rack& rack) { racks_[place] = rack; }

  /// The head that was dropped on the stage; null for none.
  const HeadType* Ejected() const { return ejected_; }
  void Drop(const HeadType& head) { ejected_ = &head; }
  void TakeEjected() { ejected_ = nullptr; }
  void TakeRack(const std::string& place) { racks_.erase(place); }

 private:
  std::vector<const HeadType*> slots_;
  std::map<std::string, Rack> racks_;
  const HeadType* ejected_ = nullptr;
};

}  // namespace Helmsway
