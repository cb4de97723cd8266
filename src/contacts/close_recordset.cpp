#include "contacts/close_recordset.h"

namespace kestro::contacts::Functions {
namespace {

template <class Step>
void IgnoringErrors(Step step) {
  try {
    step();
  } catch (const base::RuntimeError&) {
    // A recordset that is closed already, or a connection that is gone.
  }
}

}  // namespace

void RecordsetClosing::CloseRecordset(std::unique_ptr<ports::Recordset>& recordset) const {
  procedure_("CloseRecordset", [&] {
    if (!recordset) return;
    IgnoringErrors([&] { recordset->Close(); });
    IgnoringErrors([&] {
      if (auto* const connection = recordset->ActiveConnection()) connection->Close();
    });
    IgnoringErrors([&] { recordset->ClearActiveConnection(); });
    recordset.reset();
  });
}

}  // namespace kestro::contacts::Functions
