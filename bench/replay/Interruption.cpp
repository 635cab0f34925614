#include "bench/replay/Interruption.h"

#include <csignal>
#include <initializer_list>

namespace Helmsway::Interruption {
namespace {

volatile std::sig_atomic_t noted = 0;

extern "C" void NoteSignal(int signal) { noted = signal; }

}  // namespace

void Catch() {
  for (const int signal : {SIGINT, SIGTERM}) std::signal(signal, NoteSignal);
  std::signal(SIGPIPE, SIG_IGN);
}

bool Requested() { return noted != 0; }

void PassOn() {
  if (noted == 0) return;
  std::signal(noted, SIG_DFL);
  std::raise(noted);
}

}  // namespace Helmsway::Interruption
