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

using HelmswayCmds::Boolean;
using HelmswayCmds::Result;
using Lines = std::vector<std::string>;

/// Takes over a newly created object.
template <class Interface>
Ref<Interface> Adopt(Implements<Interface>* object) {
  Ref<Interface> held;
  *held.Out() = object;
  return held;
}

/// A host that records, in order, every call of the add-in: "stop False", "active True", "send HOME ALL", "sent HOME
/// ALL", "status Home all", "changed False", "focus". A line can be refused, can fail outright, or can run an action
/// while it is under way.
struct FakeHost {
  enum class Outcome { Ok, Refused, Failed };

  Lines Log;
  bool StopRequested = false;
  bool LinkDown = false;
  std::map<std::string, Outcome> Outcomes;                 ///< by whole line
  std::map<std::string, std::string> Replies;              ///< by whole line
  std::map<std::string, std::function<void()>> Meanwhile;  ///< by whole line, each time

  /// The command lines in the log.
  Lines Sent() const {
    Lines lines;
    for (const std::string& entry : Log) {
      if (entry.starts_with("send ")) lines.push_back(entry.substr(5));
    }
    return lines;
  }

  Result Note(const std::string& what, Boolean value) {
    Log.push_back(what + (value == HelmswayCmds::False ? " False" : " True"));
    return Result::Ok;
  }

  template <class Interface>
  struct Object : Implements<Interface> {
    explicit Object(FakeHost& host) : Host(host) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    ~Object() override {
      if (OnGone) OnGone();
    }
    FakeHost& Host;
    std::function<void()> OnGone;  ///< runs when the last reference has been released
  };

  struct DeviceLink final : Object<HelmswayCmds::IDeviceLink> {
    using Object::Object;
    Result SendCommand(HelmswayCmds::Text command, HelmswayCmds::ITextTarget& reply, std::int32_t third,
                       Boolean* ok) noexcept override {
      const std::string line(AsView(command));
      Host.Log.push_back("send " + line + (third == 0 ? "" : " with a third argument"));
      if (const auto found = Host.Meanwhile.find(line); found != Host.Meanwhile.end()) found->second();
      const auto found = Host.Outcomes.find(line);
      const Outcome outcome = found == Host.Outcomes.end() ? Outcome::Ok : found->second;
      Host.Log.push_back("sent " + line);
      if (outcome == Outcome::Failed) return Result::Failed;
      *ok = outcome == Outcome::Ok ? HelmswayCmds::True : HelmswayCmds::False;
      return outcome == Outcome::Ok ? reply.Assign(AsText(Host.Replies[line])) : Result::Ok;
    }
    Result GetStopRequested(Boolean* value) noexcept override {
      *value = Host.StopRequested ? HelmswayCmds::True : HelmswayCmds::False;
      return Result::Ok;
    }
    Result PutStopRequested(Boolean value) noexcept override {
      Host.StopRequested = value != HelmswayCmds::False;
      return Host.Note("stop", value);
    }
    Result PutAddInActive(Boolean value) noexcept override { return Host.Note("active", value); }
  };

  struct Connection final : Object<HelmswayCmds::IParentConnection> {
    using Object::Object;
    Result GetDeviceLink(HelmswayCmds::IDeviceLink** link) noexcept override {
      if (Host.LinkDown) return Result::Failed;
      *link = new DeviceLink(Host);
      return Result::Ok;
    }
  };

  struct StatusPanel final : Object<HelmswayCmds::IStatusPanel> {
    using Object::Object;
    Result PutText(HelmswayCmds::Text text) noexcept override {
      Host.Log.push_back("status " + std::string(AsView(text)));
      return Result::Ok;
    }
  };

  struct Window final : Object<HelmswayCmds::IHostWindow> {
    using Object::Object;
    // Tests hand over the panel itself.
    Result GetStatusBar(HelmswayCmds::IStatusBar**) noexcept override { return Result::Failed; }
    Result PutChanged(Boolean value) noexcept override { return Host.Note("changed", value); }
    Result SetFocus() noexcept override {
      Host.Log.emplace_back("focus");
      return Result::Ok;
    }
  };
};

}  // namespace OrvelCalibrateS::Testing
