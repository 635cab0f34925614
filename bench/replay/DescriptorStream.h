#pragma once

#include <array>
#include <cstddef>
#include <ostream>
#include <streambuf>

namespace Helmsway {

/// A stream that writes to a descriptor of the system, which must outlive it. What can't be written makes the stream
/// bad; a reader that is slow is waited for. Once the program has been asked to end nothing more is written.
class DescriptorStream final : public std::ostream {
 public:
  explicit DescriptorStream(int descriptor);
  DescriptorStream(const DescriptorStream&) = delete;
  DescriptorStream& operator=(const DescriptorStream&) = delete;
  ~DescriptorStream() override;

 private:
  class Buffer final : public std::streambuf {
   public:
    explicit Buffer(int descriptor);

   protected:
    int_type overflow(int_type character) override;
    int sync() override;

   private:
    bool WriteOut();

    int descriptor_;
    std::array<char, std::size_t{1} << 16> room_{};
  };

  Buffer buffer_;
};

/// Sees to it that the descriptors of standard input, output and error are open, so that no file that is opened later
/// becomes one of them and receives text that isn't for it. One that was closed can't be read or written.
/// False when that can't be done.
bool KeepStandardDescriptors() noexcept;

}  // namespace Helmsway
