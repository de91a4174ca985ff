#include "app/DesktopProgram.h"

#include <QApplication>
#include <QPixmapCache>
#include <QTimer>
#include <QWindow>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <utility>

#include "app/DemoSettings.h"
#include "app/FrmMain.h"
#include "app/WindowPlace.h"
#include "base/Fault.h"
#include "help/ProgramIcon.h"
#include "help/ProgramTitle.h"
#include "platform/qt/Console.h"
#include "platform/qt/PathText.h"
#include "platform/qt/ProgramStart.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtDateFormat.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/QtSessionFolder.h"
#include "platform/qt/QtSettingsStore.h"
#include "platform/qt/QtTimer.h"
#include "platform/qt/StopSignal.h"
#include "platform/widgets/QtDesktop.h"
#include "platform/widgets/QtFileChooser.h"
#include "platform/widgets/QtMessageBoxes.h"
#include "ports/PortTable.h"
#include "ports/QtSerialPort.h"
#include "sessions/Journal.h"
#include "sessions/ReviewedSession.h"
#include "sim/DemoSerialPort.h"
#include "sim/SiteFile.h"

namespace kelvara::app {
namespace {

constexpr int kFailed = 1;
constexpr int kIconMilliseconds = 100;
constexpr int kOfferMilliseconds = 200;
/// The desktop has placed the window by then.
constexpr int kPlacedMilliseconds = 500;
constexpr QPoint kReviewOffset(30, 30);
constexpr int kStylePictureKilobytes = 512;
/// Waiting longer for another program would freeze the window.
constexpr std::chrono::milliseconds kSettingsPatience{30};

std::string DescribeDemoPort(int /*port*/) {
  return "The built-in beltpack of the demo: ready to be opened.";
}

/// Calls the function once the desktop has placed the window, so that a message appears over it. A
/// window that opens minimised is not waited for.
void WhenPlaced(QWidget& window, const std::function<void()>& function) {
  constexpr int kTryMilliseconds = 10;
  constexpr int kMostTries = 50;
  auto* const timer = new QTimer(&window);
  QObject::connect(timer, &QTimer::timeout, &window,
                   [timer, function, tries = 0, &window]() mutable {
                     if (window.windowHandle()->isExposed() || ++tries == kMostTries) {
                       timer->deleteLater();
                       timer->stop();
                       function();
                     }
                   });
  timer->start(kTryMilliseconds);
}

/// Prints a line on standard error for what went wrong beside the session.
void PrintFailure(const std::string& failure) {
  const std::shared_ptr<void> console = qt::JoinConsole();
  std::cerr << "kelvara: " << qt::ConsoleText(failure) << '\n';
}

/// Opens the session to review; null if that fails, which a message box tells.
std::unique_ptr<sessions::ReviewedSession> OpenRecorded(platform::FileSystem& fileSystem,
                                                        const std::string& path,
                                                        platform::MessageBoxes& messageBoxes) {
  try {
    std::error_code ignored;
    // Opening one would wait for a writer.
    if (std::filesystem::is_fifo(qt::MachinePath(path), ignored)) {
      throw base::Fault(base::FaultKind::File, "\"" + path + "\" is a pipe, not a file");
    }
    return std::make_unique<sessions::ReviewedSession>(fileSystem, path);
  } catch (const base::Fault& fault) {
    messageBoxes.Show(fault.what(), help::kProgramTitle, platform::MessageIcon::Critical,
                      platform::MessageButtons::Ok);
    return nullptr;
  }
}

}  // namespace

int RunDesktopProgram(const DesktopOptions& options) {
  const qt::QtClock clock;
  const qt::QtDateFormat dateFormat;
  qt::QtFileSystem fileSystem;
  widgets::QtBeeper beeper;
  widgets::QtMessageBoxes messageBoxes;
  widgets::QtFileChooser fileChooser;
  widgets::QtDocumentOpener documentOpener;
  widgets::QtEventPump events;

  const QString settingsFile = qt::UserSettingsFile(help::kSettingsApplication);
  qt::QtSettingsStore storedSettings(settingsFile, help::kSettingsSection, kSettingsPatience);
  const qt::QtSettingsStore portSettings(settingsFile, help::kPortsSection, kSettingsPatience);
  qt::QtSettingsStore windowSettings(settingsFile, help::kWindowSection, kSettingsPatience);
  DemoSettings demoSettings(storedSettings);
  ports::PortTable ports(portSettings);
  for (const std::string& assignment : options.portAssignments) {
    ports.Assign(ports::ReadPortAssignment(assignment));
  }
  ports::QtSerialPort machinePort(ports);
  sim::Beltpack beltpack(options.sitePath ? sim::ReadSite(fileSystem, *options.sitePath)
                                          : sim::DemoSite());
  qt::QtTimer delivery(sim::kDeliveryMilliseconds);
  sim::DemoSerialPort demoPort(beltpack, clock, delivery);

  const platform::Desktop desktop{
      {.clock = clock,
       .dateFormat = dateFormat,
       .fileSystem = fileSystem,
       .beeper = beeper,
       .messageBoxes = messageBoxes,
       .events = events},
      fileChooser,
      documentOpener,
      options.demo ? static_cast<platform::SettingsStore&>(demoSettings) : storedSettings,
      qt::PathFromQString(QCoreApplication::applicationDirPath())};
  qt::QtSessionFolder sessionFolder(qt::UserSessionsFolder(help::kSettingsApplication));
  std::unique_ptr<sessions::ReviewedSession> recorded;
  if (options.reviewPath) {
    recorded = OpenRecorded(fileSystem, *options.reviewPath, messageBoxes);
    if (!recorded) {
      return kFailed;
    }
  }
  FrmMain window(
      desktop, options.demo ? static_cast<platform::SerialPort&>(demoPort) : machinePort,
      [&](int port) { return options.demo ? DescribeDemoPort(port) : machinePort.Describe(port); });
  if (!options.demo) {
    window.SetPortMarks([&machinePort](int port) { return machinePort.PresentAdapter(port); });
  }
  if (options.testReport) {
    window.Live().Display().GetDisplaySettings();
    return window.TestReport() ? 0 : 1;
  }
  if (options.rawPath) {
    window.Live().StartTrace(*options.rawPath, true);
  }
  const bool keepsJournal = !options.noJournal && !options.demo && !options.reviewPath;
  if (keepsJournal) {
    window.Live().StartJournal(sessionFolder);
    window.SetJournalFailed(PrintFailure);
    // Reading a long session takes longer than painting the window.
    QTimer::singleShot(kOfferMilliseconds, &window, [&window, &sessionFolder] {
      if (std::optional<sessions::UnfinishedSession> session =
              sessions::FindUnfinishedSession(sessionFolder)) {
        window.Notices().Offer(std::move(*session));
      }
    });
  }
  if (options.demo) {
    window.SetDemo();
  }
  window.SetSessionOpening(
      [](const std::string& path) {
        qt::StartProgram(qt::PathFromQString(QCoreApplication::applicationFilePath()), path);
      },
      sessionFolder);
  WindowPlace place(window, windowSettings);
  // A review does not cover the window that has opened it.
  place.Restore(options.reviewPath ? kReviewOffset : QPoint());
  window.SetUnloaded([&place] {
    place.Save();
    QCoreApplication::exit(0);
  });
  const std::shared_ptr<void> stopSignal = qt::AtStopSignal([&window] { window.close(); });
  // The style caches a picture of each mark that it paints, and paints the marks of a menu again at
  // every opening: without a limit the cache would grow to 10 MB.
  QPixmapCache::setCacheLimit(kStylePictureKilobytes);
  bool reviewFailed = false;
  if (options.reviewPath) {
    window.OpenReview(std::move(recorded), *options.reviewPath, [&window, &reviewFailed] {
      reviewFailed = true;
      window.close();
    });
  }
  window.show();
  if (!options.reviewPath) {
    WhenPlaced(window, [&window] { window.Form_Load(); });
  }
  QTimer::singleShot(kPlacedMilliseconds, &window, [&place] { place.NoteOpened(); });
  // Reading the icon takes longer than painting the window.
  QTimer::singleShot(kIconMilliseconds, &window,
                     [] { QApplication::setWindowIcon(help::ProgramIcon()); });
  const int result = QCoreApplication::exec();
  if (const std::string failure = window.Live().TraceFailure(); !failure.empty()) {
    PrintFailure(failure);
  }
  return reviewFailed ? kFailed : result;
}

}  // namespace kelvara::app
