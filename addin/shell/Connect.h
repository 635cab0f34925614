#pragma once

#include <memory>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"
#include "addin/shell/InProcessServer.h"
#include "addin/wizard/frmAddIn.h"

namespace OrvelCalibrateS {

/// The library's one public class. Its life is the form's: making it loads the form, its end unloads it.
class Connect final : public Implements<HelmswayCmds::IAddIn> {
 public:
  static HelmswayCmds::Result Create(const HelmswayCmds::Id& interfaceId, void** object) noexcept;

  Connect(const Connect&) = delete;
  Connect& operator=(const Connect&) = delete;

  HelmswayCmds::Result GetForm(HelmswayCmds::IAddInForm** form) noexcept override;
  HelmswayCmds::Result GetCaption(HelmswayCmds::ITextTarget& caption) noexcept override;

 private:
  Connect();
  ~Connect() override;

  std::shared_ptr<frmAddIn> form_;
  Ref<HelmswayCmds::IAddInForm> boundary_;
  InProcessServer::LivingObject living_;
};

}  // namespace OrvelCalibrateS
