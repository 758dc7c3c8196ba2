// The screen's scale factor, as visible in the swatches of the watermark editor.
#include "tests/script/process.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <sstream>

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

using nlohmann::json;

#ifdef _WIN32

// What Wine reports to the programs that start meanwhile, as long as this lives. No other test may run beside it.
class Resolution {
 public:
  explicit Resolution(int pixelsPerInch) { set(pixelsPerInch); }
  ~Resolution() { set(96); }
  Resolution(const Resolution&) = delete;
  Resolution& operator=(const Resolution&) = delete;

 private:
  static void set(int pixelsPerInch) {
    const auto value = static_cast<DWORD>(pixelsPerInch);
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", L"LogPixels", REG_DWORD, &value, sizeof value);
  }
};

#endif

// The heights of the swatches, in pixels.
std::vector<int> swatchSides(int dpi) {
#ifdef _WIN32
  const Resolution resolution(dpi);
#endif
  const auto outcome = runKiln({"drive", "--dpi", std::to_string(dpi)},
                               "select lst_selectedWatermark 1\nclick btn_WMEdit\nwidget cmb_EffWMCol\ncancel\n");
  EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
  std::istringstream lines(outcome.out);
  std::string line;
  for (int i = 0; i < 3; ++i) std::getline(lines, line);
  const json box = json::parse(line);
  std::vector<int> sides;
  for (const json& item : box.at("items"))
    if (item.at("value") != "custom") sides.push_back(item.at("side"));
  return sides;
}

TEST(Screen, SizesTheSwatches) {
  const std::pair<int, int> screens[] = {{72, 15}, {96, 15}, {120, 19}, {144, 23}, {192, 30}};
  for (const auto& [dpi, side] : screens) {
    const auto sides = swatchSides(dpi);
    EXPECT_FALSE(sides.empty());
    EXPECT_THAT(sides, testing::Each(side)) << dpi;
  }
}

}  // namespace
