#pragma once

#include <functional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/runtime_error.h"
#include "core/log_module.h"

namespace kestro::core {

/// The two spellings of the entry and exit texts; which one a procedure uses is
/// a property of the procedure.
enum class Spelling { kFullStop, kBare };

/// The frame around every procedure of one module: logs its entry and its exit
/// and is its error handler.
///
/// On a normal way out (return included) the exit line is written exactly once.
/// When an error comes, the frame puts the procedure in front of the error's
/// source chain, traces it, logs the error entry, writes no exit line, and
///  - operator() raises the error again,
///  - Outermost hands it to the given last word and returns that one's value.
/// An exception of another type becomes a RuntimeError at the innermost frame.
/// base::ProcessEnded passes untouched.
///
///   procedure_("DropCall", [&] { ... return value; });
///   procedure_.Outermost("cmdOK_Click", [&] { ... }, [&](const RuntimeError&) { ... });
class ProcedureFrame {
 public:
  ProcedureFrame(LogModule& log, std::string_view module, Spelling spelling)
      : log_(log), module_(module), spelling_(spelling) {}

  template <class Body>
  auto operator()(std::string_view name, Body&& body) const {
    return Run(spelling_, name, std::forward<Body>(body));
  }
  /// For a procedure that spells its texts differently from its module.
  template <class Body>
  auto With(Spelling spelling, std::string_view name, Body&& body) const {
    return Run(spelling, name, std::forward<Body>(body));
  }

  template <class Body, class LastWord>
  auto Outermost(std::string_view name, Body&& body, LastWord&& last_word) const {
    return OutermostWith(spelling_, name, std::forward<Body>(body), std::forward<LastWord>(last_word));
  }
  /// An entry point whose last word is silence: the log entry is all.
  template <class Body>
  void Outermost(std::string_view name, Body&& body) const {
    Outermost(name, std::forward<Body>(body), [](const base::RuntimeError&) {});
  }
  template <class Body, class LastWord>
  auto OutermostWith(Spelling spelling, std::string_view name, Body&& body, LastWord&& last_word) const {
    try {
      return Run(spelling, name, std::forward<Body>(body));
    } catch (const base::RuntimeError& error) {
      return last_word(error);
    }
  }

  /// A line of the procedure's own.
  void Log(std::string_view name, std::string_view message) const {
    log_.LogMessage({module_, name}, message);
  }
  void Trace(std::string_view name, std::string_view message) const {
    log_.TraceMessage(base::LogSource{module_, name}, message);
  }

 private:
  template <class Body>
  auto Run(Spelling spelling, std::string_view name, Body&& body) const {
    try {
      Enter(spelling, name);
      if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
        std::forward<Body>(body)();
        Leave(spelling, name);
      } else {
        auto result = std::forward<Body>(body)();
        Leave(spelling, name);
        return result;
      }
    } catch (base::RuntimeError& error) {
      Failed(name, error);
      throw;
    } catch (const std::exception&) {
      base::RuntimeError error = base::CurrentErrorAsRuntimeError();
      Failed(name, error);
      throw error;
    }
  }

  void Enter(Spelling spelling, std::string_view name) const;
  void Leave(Spelling spelling, std::string_view name) const;
  void Failed(std::string_view name, base::RuntimeError& error) const;

  LogModule& log_;
  std::string_view module_;
  Spelling spelling_;
};

}  // namespace kestro::core
