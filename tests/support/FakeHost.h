#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "addin/contract/HelmswayCmds.h"

namespace OrvelCalibrateS::Testing {

/// A host that writes down, in order, everything the add-in does to it: "stop False", "active True", "send HOME ALL",
/// "sent HOME ALL", "status Home all", "changed False", "focus". Lines can be refused, fail outright, or have something
/// happen while they are under way.
struct FakeHost {
  enum class Outcome { Ok, Refused, Failed };

  std::vector<std::string> Log;
  bool StopRequested = false;
  bool LinkDown = false;
  bool StatusFails = false;
  std::map<std::string, Outcome> Outcomes;                 ///< by whole line
  std::map<std::string, std::string> Replies;              ///< by whole line
  std::map<std::string, std::function<void()>> Meanwhile;  ///< by whole line, each time

  class DeviceLink final : public Implements<HelmswayCmds::IDeviceLink> {
   public:
    explicit DeviceLink(FakeHost& host) : host_(host) {}
    HelmswayCmds::Result SendCommand(HelmswayCmds::Text command, HelmswayCmds::ITextTarget& reply, std::int32_t third,
                                     HelmswayCmds::Boolean* ok) noexcept override {
      const std::string line(AsView(command));
      host_.Log.push_back("send " + line + (third == 0 ? "" : " with a third argument"));
      if (const auto found = host_.Meanwhile.find(line); found != host_.Meanwhile.end()) found->second();
      const auto found = host_.Outcomes.find(line);
      const Outcome outcome = found == host_.Outcomes.end() ? Outcome::Ok : found->second;
      host_.Log.push_back("sent " + line);
      if (outcome == Outcome::Failed) return HelmswayCmds::Result::Failed;
      *ok = outcome == Outcome::Ok ? HelmswayCmds::True : HelmswayCmds::False;
      return outcome == Outcome::Ok ? reply.Assign(AsText(host_.Replies[line])) : HelmswayCmds::Result::Ok;
    }
    HelmswayCmds::Result GetStopRequested(HelmswayCmds::Boolean* value) noexcept override {
      *value = host_.StopRequested ? HelmswayCmds::True : HelmswayCmds::False;
      return HelmswayCmds::Result::Ok;
    }
    HelmswayCmds::Result PutStopRequested(HelmswayCmds::Boolean value) noexcept override {
      host_.StopRequested = value != HelmswayCmds::False;
      host_.Log.push_back(host_.StopRequested ? "stop True" : "stop False");
      return HelmswayCmds::Result::Ok;
    }
    HelmswayCmds::Result PutAddInActive(HelmswayCmds::Boolean value) noexcept override {
      host_.Log.push_back(value != HelmswayCmds::False ? "active True" : "active False");
      return HelmswayCmds::Result::Ok;
    }

   private:
    FakeHost& host_;
  };

  class Connection final : public Implements<HelmswayCmds::IParentConnection> {
   public:
    explicit Connection(FakeHost& host) : host_(host) {}
    HelmswayCmds::Result GetDeviceLink(HelmswayCmds::IDeviceLink** link) noexcept override {
      if (host_.LinkDown) return HelmswayCmds::Result::Failed;
      *link = new DeviceLink(host_);
      return HelmswayCmds::Result::Ok;
    }

   private:
    FakeHost& host_;
  };

  class StatusPanel final : public Implements<HelmswayCmds::IStatusPanel> {
   public:
    explicit StatusPanel(FakeHost& host) : host_(host) {}
    HelmswayCmds::Result PutText(HelmswayCmds::Text text) noexcept override {
      if (host_.StatusFails) return HelmswayCmds::Result::Failed;
      host_.Log.push_back("status " + std::string(AsView(text)));
      return HelmswayCmds::Result::Ok;
    }

   private:
    FakeHost& host_;
  };

  class Window final : public Implements<HelmswayCmds::IHostWindow> {
   public:
    explicit Window(FakeHost& host) : host_(host) {}
    HelmswayCmds::Result GetStatusBar(HelmswayCmds::IStatusBar** /*statusBar*/) noexcept override {
      return HelmswayCmds::Result::Failed;  // tests hand over the panel itself
    }
    HelmswayCmds::Result PutChanged(HelmswayCmds::Boolean value) noexcept override {
      host_.Log.push_back(value != HelmswayCmds::False ? "changed True" : "changed False");
      return HelmswayCmds::Result::Ok;
    }
    HelmswayCmds::Result SetFocus() noexcept override {
      host_.Log.push_back("focus");
      return HelmswayCmds::Result::Ok;
    }

   private:
    FakeHost& host_;
  };

  template <class Object>
  auto Make() {
    return Adopt(new Object(*this));
  }

 private:
  template <class Interface>
  static Ref<Interface> Adopt(Implements<Interface>* object) {
    Ref<Interface> held;
    *held.Out() = object;
    return held;
  }
};

}  // namespace OrvelCalibrateS::Testing
