#include "contacts/close_recordset.h"

namespace kestro::contacts::Functions {

void RecordsetClosing::CloseRecordset(std::unique_ptr<ports::Recordset>& recordset) const {
  procedure_("CloseRecordset", [&] {
    if (!recordset) return;
    // It may be closed already, or its connection gone.
    base::IgnoringErrors([&] { recordset->Close(); });
    base::IgnoringErrors([&] {
      if (auto* const connection = recordset->ActiveConnection()) connection->Close();
    });
    base::IgnoringErrors([&] { recordset->ClearActiveConnection(); });
    recordset.reset();
  });
}

}  // namespace kestro::contacts::Functions
