#include "bench/replay/DescriptorStream.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "bench/replay/Interruption.h"

namespace Helmsway {

DescriptorStream::DescriptorStream(int descriptor) : std::ostream(nullptr), buffer_(descriptor) { rdbuf(&buffer_); }

DescriptorStream::~DescriptorStream() { flush(); }

DescriptorStream::Buffer::Buffer(int descriptor) : descriptor_(descriptor) {
  setp(room_.data(), room_.data() + room_.size());
}

DescriptorStream::Buffer::int_type DescriptorStream::Buffer::overflow(int_type character) {
  if (!WriteOut()) return traits_type::eof();
  if (!traits_type::eq_int_type(character, traits_type::eof())) {
    *pptr() = traits_type::to_char_type(character);
    pbump(1);
  }
  return traits_type::not_eof(character);
}

int DescriptorStream::Buffer::sync() { return WriteOut() ? 0 : -1; }

bool DescriptorStream::Buffer::WriteOut() {
  const char* next = pbase();
  const char* const end = pptr();
  setp(room_.data(), room_.data() + room_.size());
  while (next != end && !Interruption::Requested()) {
    const ssize_t written = ::write(descriptor_, next, static_cast<std::size_t>(end - next));
    if (written >= 0) {
      next += written;
    } else if (errno == EAGAIN) {
      // Another process that holds the pipe has made it non-blocking.
      pollfd ready{descriptor_, POLLOUT, 0};
      ::poll(&ready, 1, -1);
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

bool KeepStandardDescriptors() noexcept {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) >= 0) continue;
    // The lowest that is free, which is this one. Opened the wrong way round, so that its use fails.
    const int wrongWay = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (open("/dev/null", wrongWay) != descriptor) return false;
  }
  return true;
}

}  // namespace Helmsway
