#pragma once

#include <cstddef>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

/// Text of unknown origin, made fit for a terminal: a control character in it would move the cursor, change colours, or
/// make what is shown differ from what is there.
namespace Helmsway {

/// Length of the UTF-8 sequence at the front of `text`, 1 to 4; 0 when there is no well-formed one.
std::size_t Utf8SequenceLength(std::string_view text) noexcept;

/// `text` with each control character, each mark that changes the direction of writing, and each byte that isn't UTF-8
/// written out: as \t, \r, \n, \x1b, or \u{202e} outside ASCII. All else is unchanged, the backslash too.
std::string Printable(std::string_view text);

/// At most `most` bytes of a printable text, never a part of a character; says how much is left out.
std::string Shortened(std::string_view text, std::size_t most);

/// Passes what is written to it on to another stream, line by line, each made `Printable`. A line that isn't ended goes
/// out with a flush. The other stream must outlive it; a failure of the other stream is a failure of this one.
class PrintableStream final : public std::ostream {
 public:
  explicit PrintableStream(std::ostream& target);
  PrintableStream(const PrintableStream&) = delete;
  PrintableStream& operator=(const PrintableStream&) = delete;
  ~PrintableStream() override;

 private:
  class Buffer final : public std::streambuf {
   public:
    explicit Buffer(std::ostream& target) : target_(target) {}

   protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

   private:
    void Put(char character);

    std::ostream& target_;
    std::string line_;
  };

  Buffer buffer_;
};

}  // namespace Helmsway
