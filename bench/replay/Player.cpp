#include "bench/replay/Player.h"

#include <chrono>
#include <utility>

#include "addin/base/Texts.h"
#include "bench/host/ConfigurationFile.h"
#include "bench/host/ConfigurationService.h"
#include "bench/host/HostClasses.h"
#include "bench/replay/Interruption.h"
#include "bench/replay/MessageWords.h"
#include "bench/replay/ScriptWords.h"
#include "bench/replay/ShieldedIniService.h"

namespace Helmsway {
namespace {

using HelmswayCmds::Boolean;
using HelmswayCmds::Result;
using OrvelCalibrateS::Ref;
using Access = HostIniService::Access;
using Line = HostConnection::Line;

/// A window stands still while a write waits for another program, and its user has an eye on the outcome.
constexpr std::chrono::milliseconds PatienceOfAWindow{4'000};

constexpr std::int16_t EjectStopButton = 1;
constexpr std::int16_t StopButton = 16;
constexpr std::int16_t ToolQuestionButton = 9;  // goes on behind the question whether the teach tool is installed
constexpr std::int16_t EjectedHeadTakenButton = 11;
/// So begins the message box that asks for a head and tips to be loaded.
constexpr std::string_view EmptyNestAsked = "Eject Teach Tool";
constexpr std::string_view LoadingAsked = "Please ensure that the following has been loaded";

/// What the host's calls give doesn't matter to it: what they did shows in what the add-in does next.
void Drop(Result /*result*/) {}

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

}  // namespace

Player::Player(const AddInLibrary& library, std::string marivaneIni, InstrumentKind instrument, IReport& report,
               IAttendant* attendant, Durability durability)
    : library_(library),
      marivaneIni_(std::move(marivaneIni)),
      durability_(durability),
      report_(report),
      attendant_(attendant),
      stand_(instrument, marivaneIni_) {
  *connection_.Out() = new HostConnection(*this, *this);
  *losableConnection_.Out() = new LosableConnection(Ref<HelmswayCmds::IParentConnection>(connection_.Get()),
                                                    [this] { return LinkReachable(); });
  *window_.Out() = new HostWindow(*this);
  const std::chrono::milliseconds patience = attendant_ == nullptr ? WriteTerms().patience : PatienceOfAWindow;
  *files_.Out() = new ConfigurationService(durability_, patience, &Interruption::Requested);
  Ref<HelmswayCmds::IIniService> shielded;
  *shielded.Out() = new ShieldedIniService(Ref<HelmswayCmds::IIniService>(files_.Get()));
  *iniService_.Out() = new HostIniService(*this, std::move(shielded));
  iniService_->ExplainFailures([this] { return files_->LastProblem().sentence; });
  HostClasses::ServeIniService(Ref<HelmswayCmds::IIniService>(iniService_.Get()));
}

Player::~Player() {
  silent_ = true;
  session_.reset();
  HostClasses::ServeIniService({});
}

bool Player::Perform(const Action& action) {
  scriptLine_ = action.line;
  EndingOnFailure([&] { PerformReporting(action); });
  if (!Muted() && !lineUnderWay_) report_.Performed(surface_, window_->StatusText());
  return !ended_;
}

template <class Step>
void Player::EndingOnFailure(Step step) {
  try {
    step();
  } catch (const ScriptMistake& mistake) {
    End(ExitStatus::ScriptError, mistake.what());
  } catch (const std::exception& error) {
    End(ExitStatus::Failed, error.what());
  }
}

void Player::PerformReporting(const Action& action) {
  if (silent_) return;
  report_.Performing(action, surface_);
  if (action.needsForm && surface_ == nullptr) {
    report_.Ignored(action);
  } else if (action.needsForm) {
    DoToForm(action);
  } else if (action.needsSimulated && action.kind != ActionKind::During) {
    DoToInstrument(action);
  } else {
    Do(action);
  }
}

void Player::Do(const Action& action) {
  const std::vector<std::string>& words = action.arguments;
  switch (action.kind) {
    case ActionKind::CreateAddIn:
      return CreateAddIn();
    case ActionKind::QueueAnswer:
      return answers_.push_back(AnswerNamed(words[0]).value());
    case ActionKind::Refuse:
      return instrumentScript_.Refuse(words[0], Answer::Result::Refused, action.number);
    case ActionKind::Fail:
      return instrumentScript_.Refuse(words[0], Answer::Result::Failed, action.number);
    case ActionKind::Reply:
      return instrumentScript_.Reply(words[0], words[1]);
    case ActionKind::During:
      return instrumentScript_.During(words[0], static_cast<std::size_t>(action.number), action.waiting.front());
    case ActionKind::LinkDown:
      return connection_->SetLine(Line::Down);
    case ActionKind::LinkUp:
      return connection_->SetLine(Line::Up);
    case ActionKind::FileReadsFail:
      return iniService_->SetReads(Access::Fails);
    case ActionKind::FileReadsWork:
      return iniService_->SetReads(Access::Works);
    case ActionKind::FileWritesFail:
      return iniService_->SetWrites(Access::Fails);
    case ActionKind::FileWritesWork:
      return iniService_->SetWrites(Access::Works);
    default:
      return EditFile(action);
  }
}

void Player::DoToForm(const Action& action) {
  HelmswayCmds::IAddInForm& form = session_->Form();
  bool done = true;
  switch (action.kind) {
    case ActionKind::GiveConnection:
      Drop(form.PutObjectParent(losableConnection_.Get()));
      break;
    case ActionKind::TakeConnection:
      Drop(form.PutObjectParent(nullptr));
      break;
    case ActionKind::GiveWindow:
      Drop(form.PutFormParent(window_.Get()));
      break;
    case ActionKind::TakeWindow:
      Drop(form.PutFormParent(nullptr));
      break;
    case ActionKind::SaveChanges:
      Drop(form.SaveChanges());
      break;
    case ActionKind::LoadDefaults:
      Drop(form.LoadDefaults());
      break;
    case ActionKind::ReadMember:
      ReadMember(action.arguments[0]);
      break;
    case ActionKind::HostStop:
      connection_->Link().RequestStop();
      break;
    case ActionKind::ReleaseAddIn:
      ReleaseAddIn();
      break;
    case ActionKind::Show:
      report_.FormShown(*surface_, window_->StatusText());
      break;
    case ActionKind::ClickButton:
      done = ClickButton(action.number);
      break;
    case ActionKind::ClickBackground:
      done = surface_->Click(0);
      break;
    case ActionKind::Check:
      done = SetChecked(action.arguments[0], true);
      break;
    case ActionKind::Uncheck:
      done = SetChecked(action.arguments[0], false);
      break;
    default:
      done = surface_->Pick(surface_->Find(action.arguments[0], forms::NoIndex), action.number);
      break;
  }
  if (!done && !silent_) report_.Ignored(action);
}

void Player::DoToInstrument(const Action& action) {
  switch (action.kind) {
    case ActionKind::Seed:
      return stand_.Seed(action);
    case ActionKind::Remember:
      return stand_.Remember(action);
    case ActionKind::PlanFault:
      return stand_.PlanFault(action);
    case ActionKind::ShowInstrument:
      return report_.InstrumentShown(stand_.Training().Look(), CompareMemory(CalibrationMemory(), marivaneIni_));
    case ActionKind::ShowScore:
      return report_.ScoreShown(stand_.Training().CurrentScore());
    case ActionKind::PowerCycle:
      return stand_.Training().PowerCycle();
    default:
      return stand_.Training().SetRemote(action.kind == ActionKind::RemoteOn);
  }
}

void Player::CreateAddIn() {
  if (surface_ != nullptr) return;
  ReleaseAddIn();
  session_.emplace(library_);
  surface_ = &session_->Surface();
  surface_->SetObserver(this);
  surface_->SetMessageBoxes(this);
  if (attendant_ != nullptr) attendant_->FormLoaded(*surface_);
}

void Player::ReleaseAddIn() {
  session_.reset();
  surface_ = nullptr;
}

void Player::ReadMember(const std::string& name) {
  HelmswayCmds::IAddInForm& form = session_->Form();
  const auto tell = [&](Result result, const MemberValue& value) {
    if (result == Result::Ok) report_.MemberRead(name, value);
  };
  if (name == "Caption") {
    std::string caption;
    OrvelCalibrateS::StringTarget target(caption);
    const Result result = session_->Connect().GetCaption(target);
    tell(result, caption);
  } else if (name == "Frame") {
    Ref<HelmswayCmds::IObject> frame;
    const Result result = form.GetFrame(frame.Out());
    tell(result, std::string(surface_->State(0).name));
  } else if (name == "HelpContextID") {
    std::int32_t helpContextId = 0;
    const Result result = form.GetHelpContextID(&helpContextId);
    tell(result, helpContextId);
  } else {
    Boolean show = HelmswayCmds::False;
    const Result result = name == "ShowButtons" ? form.GetShowButtons(&show) : form.GetShowStatusBar(&show);
    tell(result, show != HelmswayCmds::False);
  }
}

void Player::EditFile(const Action& action) {
  const std::vector<std::string>& words = action.arguments;
  const Interruption::Shield shield;
  const WriteTerms terms{durability_, WriteTerms().patience, &Interruption::Requested};
  const FileProblem problem = action.kind == ActionKind::FileSet
                                  ? SetIniValue(marivaneIni_, words[0], words[1], words[2], terms)
                                  : RemoveIniValue(marivaneIni_, words[0], words[1], terms);
  if (problem) throw std::runtime_error("Marivane.ini can't be edited: " + action.text + ": " + problem.sentence);
}

bool Player::ClickButton(std::int32_t index) {
  if (lineUnderWay_ && index != EjectStopButton && index != StopButton) return false;
  const bool outer = std::exchange(registeringTool_, index == ToolQuestionButton);
  const bool done = surface_->Click(surface_->Find("cmdButton", static_cast<std::int16_t>(index)));
  registeringTool_ = outer;
  if (done && index == EjectedHeadTakenButton) ClearEjectPosition();
  return done;
}

void Player::ClearEjectPosition() {
  if (TrainingInstrument* const training = stand_.TrainingIfMade())
    OperatorHands::ClearEjectPosition(training->Machine());
}

bool Player::SetChecked(const std::string& box, bool checked) {
  return surface_->SetChecked(surface_->Find(box, forms::NoIndex), checked);
}

Player::Ending Player::Execute(std::string_view line) {
  const std::optional<Answer> refusal = instrumentScript_.TakeRefusal(line);
  if (!refusal) BeginAtInstrument(line);
  for (const Action& action : instrumentScript_.TakeWaiting(line, linesSent_)) PerformReporting(action);
  if (attendant_ != nullptr) attendant_->LineUnderWay(line);
  if (refusal) return {*refusal, AnswerBy::Script};
  Answer answer = stand_.Instrument().End(StopRequested());
  const std::string* const reply = instrumentScript_.ReplyTo(line);
  if (answer.result == Answer::Result::Ok && reply != nullptr) answer.reply = *reply;
  return {std::move(answer), AnswerBy::Instrument};
}

void Player::BeginAtInstrument(std::string_view line) {
  IInstrument& instrument = stand_.Instrument();
  TrainingInstrument* const training = stand_.TrainingIfMade();
  if (training != nullptr && surface_ != nullptr) hands_.LoadPickedRack(*surface_, training->Machine());
  instrument.Begin(line);
  const Fault* const fault = training == nullptr ? nullptr : training->FaultUnderWay();
  if (fault != nullptr) report_.FaultStruck(*fault);
}

bool Player::StopRequested() { return connection_->Link().StopIsRequested(); }

bool Player::LinkReachable() noexcept {
  bool reachable = true;
  if (rehearsal_ != nullptr) return reachable;
  EndingOnFailure([&] {
    if (TrainingInstrument* const training = stand_.TrainingIfMade()) reachable = training->TryLink();
  });
  if (!reachable) LinkNotReached();
  return reachable;
}

void Player::End(ExitStatus status, std::string what) {
  if (!ended_) ended_ = EarlyEnd{status, scriptLine_, std::move(what)};
  silent_ = true;
  iniService_->SetWrites(Access::Fails);
}

void Player::IniWritten(std::string_view section, std::string_view key, std::string_view value) noexcept {
  if (Muted()) return;
  report_.IniWritten(section, key, value);
  // Who registers the teach tool has put it on.
  TrainingInstrument* const training = stand_.TrainingIfMade();
  if (training == nullptr || !registeringTool_ || section != "HeadType" || key != "Installed") return;
  EndingOnFailure([&] { training->Machine().PutOnModule(std::string(value)); });
}

Result Player::Send(std::string_view line, std::string& reply, bool& accepted) noexcept {
  if (silent_) return Result::Failed;
  if (rehearsal_ != nullptr) {
    rehearsal_->lines.emplace_back(line);
    accepted = true;
    return Result::Ok;
  }
  const bool outerLine = std::exchange(lineUnderWay_, true);
  ++linesSent_;
  Ending ending{{Answer::Result::Failed, "", ""}, AnswerBy::Instrument};
  EndingOnFailure([&] {
    report_.LineBegins(line);
    ending = Execute(line);
  });
  lineUnderWay_ = outerLine;
  if (silent_) return Result::Failed;
  Answer& answer = ending.answer;
  report_.LineEnded(line, answer, ending.by);
  if (answer.result == Answer::Result::Failed) return Result::Failed;
  accepted = answer.result == Answer::Result::Ok;
  if (accepted) reply = std::move(answer.reply);
  return Result::Ok;
}

void Player::DoWhatBoxAsks(std::string_view title, std::string_view text, forms::MessageAnswer answer) {
  TrainingInstrument* const training = stand_.TrainingIfMade();
  if (training == nullptr || surface_ == nullptr) return;
  if (text.starts_with(LoadingAsked)) hands_.LoadRequirements(*surface_, training->Machine());
  if (title == EmptyNestAsked && answer == forms::MessageAnswer::Ok) {
    OperatorHands::EmptyPickedNest(*surface_, training->Machine());
  }
}

forms::MessageAnswer Player::Show(std::string_view title, std::string_view text, forms::MessageButtons buttons,
                                  forms::MessageIcon icon) noexcept {
  if (rehearsal_ != nullptr) return forms::MessageAnswer::Ok;
  forms::MessageAnswer answer = forms::CarefulAnswer(buttons);
  if (silent_) return answer;
  EndingOnFailure([&] {
    answer = AnswerTo(title, text, buttons, icon);
    report_.MessageAnswered({title, text, buttons, icon, answer});
    DoWhatBoxAsks(title, text, answer);
  });
  return answer;
}

forms::MessageAnswer Player::AnswerTo(std::string_view title, std::string_view text, forms::MessageButtons buttons,
                                      forms::MessageIcon icon) {
  if (attendant_ != nullptr) return attendant_->Show(title, text, buttons, icon);
  return buttons == forms::MessageButtons::Ok ? forms::MessageAnswer::Ok : QueuedAnswer(title, buttons);
}

forms::MessageAnswer Player::QueuedAnswer(std::string_view title, forms::MessageButtons buttons) {
  const std::string box = "the message box " + Quoted(title) + " (" + std::string(NameOf(buttons)) + ")";
  if (answers_.empty()) throw ScriptMistake("no answer is queued for " + box);
  const forms::MessageAnswer answer = answers_.front();
  answers_.pop_front();
  if (Offers(buttons, answer)) return answer;
  throw ScriptMistake("the answer " + std::string(NameOf(answer)) + " isn't among the buttons of " + box);
}

void Player::Changed(forms::ControlId control, forms::Aspect aspect) noexcept {
  if (attendant_ != nullptr) attendant_->Changed(control, aspect);
}

void Player::Closed() noexcept {
  surface_ = nullptr;
  if (attendant_ != nullptr) attendant_->Closed();
}

}  // namespace Helmsway
