// What host operations throw. A plug-in does not catch these in its handlers: they pass through it to the host, which
// stops them where it dispatched the event.
#pragma once

#include "kiln/text.h"

#include <exception>

namespace Kiln {

class Exception : public std::exception {
 public:
  // `sentence`: one sentence, UTF-8.
  Exception(Allocator& allocator, StringView sentence)
      : message(allocator, std::string(sentence.view()).append(1, '\0')) {}

  // The message, null-terminated; valid as long as the exception or a copy of it lives.
  const char* what() const noexcept override { return message.empty() ? "" : message.view().data(); }

 private:
  String message;
};

// Another program has changed the file that was to be replaced, since the plug-in has last looked at it. The plug-in
// reads it again, and commits its change to what is in it now.
class FileChanged : public Exception {
 public:
  using Exception::Exception;
};

namespace XUL {

// A required name is unknown to the host: a signal of an unknown property, for example.
class KeyError : public Exception {
 public:
  using Exception::Exception;
};

}  // namespace XUL
}  // namespace Kiln
