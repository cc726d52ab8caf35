#pragma once

#include <stdexcept>
#include <string>

#include "access/reader_protocol.h"

namespace mdbread {

// Ends the program with an exit code of the protocol and a message for stderr.
class Failure : public std::runtime_error {
  public:
    Failure(accessfile::protocol::ExitCode code, const std::string& message)
        : std::runtime_error(message), code_(code) {}
    accessfile::protocol::ExitCode code() const { return code_; }

  private:
    accessfile::protocol::ExitCode code_;
};

}  // namespace mdbread
