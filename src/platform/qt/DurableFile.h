#pragma once

#include <QFile>
#include <QString>
#include <chrono>

/// The steps that replace a file so that a reader, or a power cut, finds the old one or the new
/// one.
namespace kelvara::qt {

/// Opens a file to read it, without keeping other programs from replacing it meanwhile. Waits up to
/// `patience` for a program that keeps it to itself.
bool OpenShared(QFile& file, std::chrono::milliseconds patience);

/// Waits until what was written to an open, unbuffered file is on the disk. Returns false if the
/// disk refuses it.
bool Synchronise(QFile& file);

/// Puts the file `newPath` in the place of `path`, in one step, with the access rights of the file
/// that it replaces. Waits up to `patience` for programs that are reading that file. Returns why it
/// failed, with both files unchanged; empty if it succeeded.
QString PutInPlace(const QString& newPath, const QString& path, std::chrono::milliseconds patience);

}  // namespace kelvara::qt
