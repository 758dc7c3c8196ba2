// Labels of the toolkit's own dialogs, which take a text that looks like HTML for HTML.
#pragma once

class QWidget;

namespace Window {

// Makes every label in the dialog show its text as it is, since that may contain names and texts of others.
void showPlain(QWidget& dialog);

}  // namespace Window
