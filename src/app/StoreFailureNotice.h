#pragma once

#include <QString>

#include <memory>

class QMessageBox;

namespace tarnwell {

// Tells a desktop user why the agent cannot start: the store at `path` cannot
// be opened (`description`) and was left untouched. A desktop notification
// when a server answers, otherwise a small dialog. Returns when it has been
// shown (the dialog: when it is closed, or after two minutes).
void showStoreFailure(const QString &path, const QString &description);

// The dialog shown where no notification server answers.
std::unique_ptr<QMessageBox> makeStoreFailureDialog(const QString &path, const QString &description);

// The notification's or the dialog's texts.
QString storeFailureTitle();
QString storeFailureBody(const QString &path, const QString &description);

} // namespace tarnwell
