#pragma once

#include <memory>
#include <utility>

#include "addin/base/Implements.h"
#include "addin/contract/HelmswayCmds.h"
#include "addin/shell/InProcessServer.h"
#include "addin/wizard/frmAddIn.h"

namespace OrvelCalibrateS {

/// The form as the host sees it. Once the form has been unloaded, every operation fails.
class AddInForm final : public Implements<HelmswayCmds::IAddInForm> {
 public:
  explicit AddInForm(std::shared_ptr<frmAddIn> form) : form_(std::move(form)) {}

  HelmswayCmds::Result SaveChanges() noexcept override;
  HelmswayCmds::Result LoadDefaults() noexcept override;
  HelmswayCmds::Result PutObjectParent(HelmswayCmds::IObject* connection) noexcept override;
  HelmswayCmds::Result PutFormParent(HelmswayCmds::IObject* window) noexcept override;
  HelmswayCmds::Result GetFrame(HelmswayCmds::IObject** frame) noexcept override;
  HelmswayCmds::Result GetHwnd(std::int32_t* handle) noexcept override;
  HelmswayCmds::Result GetHelpContextID(std::int32_t* helpContextId) noexcept override;
  HelmswayCmds::Result GetShowStatusBar(HelmswayCmds::Boolean* show) noexcept override;
  HelmswayCmds::Result GetShowButtons(HelmswayCmds::Boolean* show) noexcept override;

 private:
  std::shared_ptr<frmAddIn> form_;
  InProcessServer::LivingObject living_;
};

}  // namespace OrvelCalibrateS
