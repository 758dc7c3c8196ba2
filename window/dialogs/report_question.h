// Shows a report of a problem before it is saved.
#pragma once

#include "window/language/texts.h"

#include <QString>

#include <functional>
#include <optional>

class QWidget;

namespace Window {

// The report with the user's texts, or with placeholders for them.
using ReportText = std::function<QString(bool includesTexts)>;

// The report that the user wants to save; nothing when they cancel.
std::optional<QString> askToReport(const ReportText& report, const Texts& texts, QWidget* parent);

}  // namespace Window
