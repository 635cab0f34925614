#pragma once

#include <memory>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"
#include "addin/shell/FormLoad.h"
#include "addin/shell/InProcessServer.h"

namespace OrvelCalibrateS {

/// The library's one public class. Creating one loads the form unless it is loaded; the end of the last one unloads it.
class Connect final : public Implements<HelmswayCmds::IAddIn> {
 public:
  /// Creates nothing when the class doesn't offer the interface.
  static HelmswayCmds::Result Create(const HelmswayCmds::Id& interfaceId, void** object) noexcept;

  Connect(const Connect&) = delete;
  Connect& operator=(const Connect&) = delete;

  HelmswayCmds::Result GetForm(HelmswayCmds::IAddInForm** form) noexcept override;
  HelmswayCmds::Result GetCaption(HelmswayCmds::ITextTarget& caption) noexcept override;

 private:
  Connect();
  ~Connect() override = default;

  InProcessServer::InUse inUse_;  // the first member, so destroyed last: the form's end calls the host
  Ref<HelmswayCmds::IAddInForm> boundary_;
  std::shared_ptr<FormLoad> load_;
};

}  // namespace OrvelCalibrateS
