#pragma once

#include <QString>
#include <string_view>

#include "platform/SessionFolder.h"

namespace kelvara::qt {

/// The folder "sessions" of an application in the user's local data folder.
QString UserSessionsFolder(std::string_view application);

/// A folder of locked files on this machine.
class QtSessionFolder : public platform::SessionFolder {
 public:
  explicit QtSessionFolder(QString folder) : folder_(std::move(folder)) {}

  std::vector<Entry> List() const override;
  std::string PathOf(const std::string& name) const override;
  std::unique_ptr<platform::LockedFile> Create(const std::string& name) override;
  std::unique_ptr<platform::LockedFile> Open(const std::string& name) override;

 private:
  QString FilePath(const std::string& name) const;

  QString folder_;
};

}  // namespace kelvara::qt
