#include "app/MainStatusBar.h"

#include <QFontMetrics>
#include <cstddef>

#include "qt/Text.h"

namespace kelvara::app {
namespace {

/// The widest text that each panel has to show, and what a reader is told of it.
struct PanelForm {
  const char* widest;
  const char* accessibleName;
};

constexpr std::array<PanelForm, 6> kPanelForms{{{"", "Link"},
                                                {"Logging Paused...", "Capture"},
                                                {"Reports: 99999", "Reports"},
                                                {"AAs: 51", "Active Antennas"},
                                                {"No Comms", "Port"},
                                                {"115200", "Baud rate"}}};
constexpr int kPanelPadding = 10;

}  // namespace

MainStatusBar::MainStatusBar(QWidget* parent) : QStatusBar(parent) {
  setObjectName(QStringLiteral("StatusBar1"));
  for (std::size_t i = 0; i < panels_.size(); ++i) {
    auto* const panel = new QLabel(this);
    panel->setObjectName(QStringLiteral("Panel%1").arg(i + 1));
    panel->setTextFormat(Qt::PlainText);
    panel->setAccessibleName(QString::fromLatin1(kPanelForms.at(i).accessibleName));
    panel->setMinimumWidth(QFontMetrics(panel->font())
                               .horizontalAdvance(QString::fromLatin1(kPanelForms.at(i).widest)) +
                           kPanelPadding);
    addWidget(panel, i == 0 ? 1 : 0);
    panels_.at(i) = panel;
  }
}

void MainStatusBar::SetPanel(platform::StatusPanel panel, std::string_view text) {
  panels_.at(static_cast<std::size_t>(panel) - 1)->setText(qt::ToQString(text));
}

}  // namespace kelvara::app
