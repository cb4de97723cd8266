#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/application_flags.h"
#include "core/dialling.h"
#include "core/messages.h"
#include "core/procedure_frame.h"

namespace kestro::management {

/// Dials the number of a link that was clicked elsewhere, in a browser for
/// instance. Any web page can offer such links, so nothing is dialled before the
/// user has seen the number and said yes. One question at a time: links that
/// come while it is open are dropped, however many a page sends. Before the start
/// has come to its end nothing is asked: the last link that came waits for it.
class LinkDialling {
 public:
  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    const core::ApplicationFlags& flags;
    core::Dialling& dialling;
  };

  /// All of them must outlive it.
  explicit LinkDialling(const Needs& needs)
      : procedure_(needs.log, "KESTROCTI.LinkDialling", core::Spelling::kFullStop), needs_(needs) {}

  /// A number in the form of core::NumberOfLink; an empty one tells of a link
  /// without a number, which the user is told. Anything else counts as empty. Raises nothing.
  void DialLink(std::string_view number);
  /// The start has come to its end: asks about the link that waits for it. Raises nothing.
  void AskAfterStart();

 private:
  void AskAndDial(std::string_view number);

  core::ProcedureFrame procedure_;
  Needs needs_;
  bool started_ = false;
  std::optional<std::string> waiting_;  // for the end of the start
  bool asking_ = false;
};

}  // namespace kestro::management
