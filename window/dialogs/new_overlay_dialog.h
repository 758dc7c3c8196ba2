// Asks which page becomes an overlay, and for its name.
#pragma once

#include "window/dialogs/name_field.h"
#include "window/language/texts.h"
#include "window/page/page_artist.h"

#include <QDialog>

#include <filesystem>
#include <functional>
#include <optional>

class QFormLayout;
class QRadioButton;
class QSpinBox;

namespace Window {

class PaperView;

// The form as a PDF.
struct OverlayForm {
  std::filesystem::path pdf;
  int pages = 1;

  // Whether the form is a picture, which may fill the paper.
  bool isPicture = false;
};

// What the user has chosen.
struct NewOverlay {
  std::filesystem::path pdf;
  int page = 1;
  QString name;
};

struct NewOverlayQuestion {
  // Of the form's file, without folder; and the overlay's name to begin with.
  QString fileName;
  QString name;

  QStringList offered = {};
  JudgeName judge = {};

  OverlayForm form;

  // Makes the form again, of a picture that fills the paper or does not. Nothing when that fails; the user knows why.
  std::function<std::optional<OverlayForm>(bool fills)> remake = {};

  // Makes the overlay; false when there is none, and the user knows why: then the dialog stays.
  std::function<bool(const NewOverlay&)> make = {};
};

class NewOverlayDialog final : public QDialog {
  Q_OBJECT

 public:
  NewOverlayDialog(NewOverlayQuestion asked, const Texts& texts, QWidget* parent);

  // Whether the picture of the page shows what is chosen.
  bool isSettled() const { return artist.isIdle(); }

  void accept() override;

 private:
  void fitOnScreen();
  void addPages(QFormLayout& rows, const Texts& texts);
  void addSizes(QFormLayout& rows, const Texts& texts);
  void draw();
  void fill(bool fills);

  NewOverlayQuestion question;
  PaperView* paper;
  QSpinBox* page = nullptr;  // null when the form has one page
  QRadioButton* ownSize = nullptr;
  QRadioButton* paperSize = nullptr;
  NameField* field = nullptr;
  PageArtist artist;
};

}  // namespace Window
