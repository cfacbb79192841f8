#pragma once

#include <QString>
#include <filesystem>
#include <functional>

class QFileDialog;
class QWidget;

namespace pallomir {

/// A dialog over `owner` that asks for a file, named `name` for tests; not shown yet, and gone once it is
/// closed. It begins in `folder`, in the user's documents where that is empty. `then` gets the path, from the
/// event loop after the dialog has closed; nothing when the user cancels.
///
/// It asks nothing back, because messages of its own would wait in an event loop of theirs: whoever gets the
/// answer asks whether a file that is there may be replaced. Files can't be renamed or deleted in it.
QFileDialog* MakeFileDialog(QWidget* owner, const char* name, const QString& title, const QString& folder,
                            std::function<void(const std::filesystem::path&)> then);

/// Asks in such a dialog for a CSV file to write; `file` is the name that it offers.
QFileDialog* ShowCsvDialog(QWidget* owner, const char* name, const QString& title, const QString& file,
                           std::function<void(const std::filesystem::path&)> then);

}  // namespace pallomir
