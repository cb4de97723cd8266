#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "contacts/database_session.h"
#include "ports/database.h"

namespace kestro::contacts {

/// The rows of a query together with the connection they are read through.
class ConnectedRecordset final : public ports::Recordset {
 public:
  ConnectedRecordset(ports::Database& database, std::string_view connection_string, std::string_view text,
                     const std::vector<DatabaseSession::Value>& values = {})
      : session_(database, connection_string), rows_(session_.Query(text, values)) {}

  [[nodiscard]] bool AtEnd() const override { return rows_->AtEnd(); }
  void MoveNext() override { rows_->MoveNext(); }
  [[nodiscard]] std::int64_t RecordCount() const override { return rows_->RecordCount(); }
  [[nodiscard]] std::int64_t Position() const override { return rows_->Position(); }
  void MoveTo(std::int64_t row) override { rows_->MoveTo(row); }
  [[nodiscard]] int FieldCount() const override { return rows_->FieldCount(); }
  [[nodiscard]] std::string_view FieldName(int index) const override { return rows_->FieldName(index); }
  [[nodiscard]] ports::DatabaseValue Field(int index) const override { return rows_->Field(index); }
  [[nodiscard]] std::string_view Text(int index) const override { return rows_->Text(index); }
  [[nodiscard]] std::int64_t Integer(int index) const override { return rows_->Integer(index); }
  [[nodiscard]] int FieldIndex(std::string_view name) const override { return rows_->FieldIndex(name); }
  [[nodiscard]] std::string Sort() const override { return rows_->Sort(); }
  void SetSort(std::string_view sort) override { rows_->SetSort(sort); }
  void Close() override { rows_->Close(); }
  [[nodiscard]] ports::Connection* ActiveConnection() override { return rows_->ActiveConnection(); }
  void ClearActiveConnection() override { rows_->ClearActiveConnection(); }

 private:
  DatabaseSession session_;
  std::unique_ptr<ports::Recordset> rows_;
};

}  // namespace kestro::contacts
