#include "window/language/qt_texts.h"

namespace Window {
namespace {

struct Translation {
  const char* qtText;
  const char* name;
};

// Keyed by Qt's texts; equal texts mean the same throughout this window.
constexpr Translation translations[] = {
    {"OK", "OK"},
    {"&OK", "OK"},
    {"Cancel", "CANCEL"},
    {"&Cancel", "CANCEL"},
    {"Close", "CLOSE"},
    {"&Close", "CLOSE"},
    {"Yes", "YES"},
    {"&Yes", "YES"},
    {"No", "NO"},
    {"&No", "NO"},
    {"Open", "OPEN_BUTTON"},
    {"&Open", "OPEN_BUTTON"},
    {"Save", "SAVE"},
    {"&Save", "SAVE"},
    {"Save As", "PRINT_TITLE"},
    {"Look in:", "LOOK_IN"},
    {"File &name:", "FILE_NAME"},
    {"Files of type:", "FILES_OF_TYPE"},
    {"Directory:", "FOLDER"},
    {"Directory", "FOLDER"},
    {"File Folder", "FOLDER"},
    {"Folder", "FOLDER"},
    {"Drive", "FOLDER"},
    {"Back", "BACK"},
    {"Go back", "BACK"},
    {"Forward", "FORWARD"},
    {"Go forward", "FORWARD"},
    {"Parent Directory", "PARENT_FOLDER"},
    {"Go to the parent directory", "PARENT_FOLDER"},
    {"Create New Folder", "NEW_FOLDER"},
    {"Create a New Folder", "NEW_FOLDER"},
    {"&New Folder", "NEW_FOLDER"},
    {"New Folder", "NEW_FOLDER"},
    {"List View", "LIST_VIEW"},
    {"Change to list view mode", "LIST_VIEW"},
    {"Detail View", "DETAIL_VIEW"},
    {"Change to detail view mode", "DETAIL_VIEW"},
    {"Show &hidden files", "SHOW_HIDDEN"},
    {"&Rename", "RENAME"},
    {"&Delete", "DELETE"},
    {"Delete", "DELETE"},
    {"Remove", "DELETE"},
    {"Computer", "COMPUTER"},
    {"My Computer", "COMPUTER"},
    {"Sidebar", "PLACES"},
    {"List of places and bookmarks", "PLACES"},
    {"Files", "FILE_NAME"},
    {"Name", "NAME"},
    {"Size", "SIZE"},
    {"Type", "TYPE"},
    {"Kind", "TYPE"},
    {"Date Modified", "MODIFIED"},
    {"%1 already exists.\nDo you want to replace it?", "FILE_EXISTS"},
    {"%1\nFile not found.\nPlease verify the correct file name was given.", "FILE_NOT_FOUND"},
    {"%1\nDirectory not found.\nPlease verify the correct directory name was given.", "FILE_NOT_FOUND"},
    {"&Undo", "UNDO"},
    {"&Redo", "REDO"},
    {"Cu&t", "CUT"},
    {"&Copy", "COPY"},
    {"Copy &Link Location", "COPY_LINK"},
    {"&Paste", "PASTE"},
    {"Select All", "SELECT_ALL"},
    {"Select Color", "PICK_COLOUR"},
    {"&Basic colors", "BASIC_COLOURS"},
    {"&Custom colors", "CUSTOM_COLOURS"},
    {"&Add to Custom Colors", "ADD_COLOUR"},
    {"&Pick Screen Color", "SCREEN_COLOUR"},
    {"Cursor at %1, %2\nPress ESC to cancel", "SCREEN_COLOUR_HINT"},
    {"Cursor at %1, %2, color: %3\nPress ESC to cancel", "SCREEN_COLOUR_HINT"},
    {"Hu&e:", "HUE"},
    {"&Sat:", "SATURATION"},
    {"&Val:", "BRIGHTNESS"},
    {"&Red:", "RED"},
    {"&Green:", "GREEN"},
    {"Bl&ue:", "BLUE"},
    {"&HTML:", "COLOUR_CODE"},
    {"Closes the dock widget", "CLOSES_PANE"},
    {"Undocks and re-attaches the dock widget", "FLOATS_PANE"},
};

}  // namespace

void QtTexts::setTexts(const Texts& texts) {
  translations.clear();
  for (const Translation& known : Window::translations) translations.insert(known.qtText, texts(known.name));
}

QString QtTexts::translate(const char*, const char* sourceText, const char*, int) const {
  return translations.value(sourceText);
}

}  // namespace Window
