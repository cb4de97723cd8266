#include "scenario/recording_file_dialogs.h"

#include "scenario/quoting.h"

namespace kestro::scenario {

std::optional<std::string> RecordingFileDialogs::OpenFile(const ports::FileDialogRequest& request) {
  std::optional<std::string> answer;
  if (!answers_.empty()) {
    answer = std::move(answers_.front());
    answers_.pop_front();
  }
  transcript_.Add("file-dialog title=" + Quoted(request.title) + " filter=" + Quoted(request.filter) +
                  " extension=" + Quoted(request.default_extension) + " = " +
                  (answer ? QuotedPath(*answer) : "cancel"));
  return answer;
}

}  // namespace kestro::scenario
