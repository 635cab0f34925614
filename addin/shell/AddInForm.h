#pragma once

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"
#include "addin/shell/InProcessServer.h"

namespace OrvelCalibrateS {

/// The library's one form as the host sees it. Works on the loaded form; every operation fails while no form is loaded.
class AddInForm final : public Implements<HelmswayCmds::IAddInForm> {
 public:
  /// Returns the only object: all references held at a time are to the same one.
  static Ref<HelmswayCmds::IAddInForm> TheOne();

  AddInForm(const AddInForm&) = delete;
  AddInForm& operator=(const AddInForm&) = delete;

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
  AddInForm() = default;
  ~AddInForm() override;

  InProcessServer::InUse inUse_;
};

}  // namespace OrvelCalibrateS
