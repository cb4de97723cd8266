#include "adapters/qt/qt_file_dialogs.h"

#include <QApplication>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>

#include "adapters/qt/qt_text.h"

namespace kestro::adapters {
namespace {

/// "Text files|*.txt;*.csv|" becomes "Text files (*.txt *.csv)".
QStringList NameFilters(const QString& filter) {
  const QStringList parts = filter.split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    // The dialog takes what stands in parentheses for the patterns: the description's own go.
    const QString description = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
    const QString patterns = QString(parts[i + 1]).replace(QLatin1Char(';'), QLatin1Char(' '));
    filters.append(description + QStringLiteral(" (") + patterns + QLatin1Char(')'));
  }
  return filters;
}

}  // namespace

std::optional<std::string> QtFileDialogs::OpenFile(const ports::FileDialogRequest& request) {
  boundary_.ThrowIfEnded();
  QFileDialog dialog(QApplication::activeWindow(), ToQString(request.title));
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setNameFilters(NameFilters(ToQString(request.filter)));
  const QString extension = ToQString(request.default_extension);
  dialog.setDefaultSuffix(extension.startsWith(QLatin1Char('.')) ? extension.mid(1) : extension);
  const QString start = ToQString(native_path_(request.initial_path));
  if (QFileInfo(start).isDir()) dialog.setDirectory(start);
  if (!request.initial_name.empty()) dialog.selectFile(ToQString(request.initial_name));
  dialog.setWindowModality(Qt::ApplicationModal);
  QEventLoop loop;
  QObject::connect(&dialog, &QFileDialog::finished, &loop, &QEventLoop::quit);
  dialog.show();
  boundary_.RunLoop(loop);
  const QStringList chosen = dialog.selectedFiles();
  if (dialog.result() != QDialog::Accepted || chosen.isEmpty()) return std::nullopt;
  return system_path_(ToUtf8(chosen.constFirst()));
}

}  // namespace kestro::adapters
