#include "window/language/qt_texts.h"

#include "formats/sentences.h"

#include <string_view>

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
    {"Scroll here", "SCROLL_HERE"},
    {"Left edge", "SCROLL_START"},
    {"Right edge", "SCROLL_END"},
    {"Top", "SCROLL_TOP"},
    {"Bottom", "SCROLL_BOTTOM"},
    {"Page up", "PAGE_UP"},
    {"Page down", "PAGE_DOWN"},
    {"Page left", "PAGE_LEFT"},
    {"Page right", "PAGE_RIGHT"},
    {"Scroll up", "SCROLL_UP"},
    {"Scroll down", "SCROLL_DOWN"},
    {"Scroll left", "SCROLL_LEFT"},
    {"Scroll right", "SCROLL_RIGHT"},
    {"&Step up", "STEP_UP"},
    {"Step &down", "STEP_DOWN"},
    {"Recent Places", "RECENT_PLACES"},
    {"All Files (*)", "ALL_FILES"},
    {"Are you sure you want to delete '%1'?", "DELETE_FILE_QUESTION"},
    {"'%1' is write protected.\nDo you want to delete it anyway?", "DELETE_PROTECTED"},
    {"Could not delete directory.", "NOT_DELETED"},
    {"&Select All", "SELECT_ALL"},
    {"Ctrl", "KEY_CONTROL"},
    {"Shift", "KEY_SHIFT"},
    {"Del", "KEY_DELETE"},
    {"Closes the dock widget", "CLOSES_PANE"},
    {"Undocks and re-attaches the dock widget", "FLOATS_PANE"},
};

}  // namespace

void QtTexts::setTexts(const Texts& texts) {
  translations.clear();
  for (const Translation& known : Window::translations) translations.insert(known.qtText, texts(known.name));
}

QString QtTexts::translate(const char* context, const char* sourceText, const char*, int) const {
  const auto known = translations.find(sourceText);
  if (known != translations.end()) return *known;
  // Qt names the system's reasons as the system does.
  const bool isReason = context != nullptr && std::string_view(context) == "QIODevice";
  return isReason ? QString::fromStdString(Formats::sentence(sourceText)) : QString();
}

}  // namespace Window
