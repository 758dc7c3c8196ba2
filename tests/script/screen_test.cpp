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

TEST(Screen, SizesTheThumbnailsOfSeveralOverlays) {
  const auto folder = testFolder() / "home" / "profile" / "overlays";
  std::filesystem::create_directories(folder);
  std::string record(154, '\0');
  record[0] = 'A';
  const std::string name = "00001.opa";
  for (std::size_t i = 0; i < name.size(); ++i) record[128 + 2 * i] = name[i];
  writeFile(folder / "ovlNmFl.flo", record);
  writeFile(folder / name, "an overlay");
  std::string bitmap("BM\x46\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x01\0\0\0\x04\0\0\0\x01\0\x18\0", 30);
  bitmap.resize(54 + 4 * 4, '\0');
  writeFile(folder / "00001.bmp", bitmap);
  const std::pair<int, int> screens[] = {{96, 4}, {120, 5}, {192, 8}};
  for (const auto& [dpi, side] : screens) {
#ifdef _WIN32
    const Resolution resolution(dpi);
#endif
    const auto outcome = runKiln({"drive", "--dpi", std::to_string(dpi), "--home", (testFolder() / "home").string()},
                                 "select cmb_EffOverlay Multiple\nwidget lib_MulOvlSource\ncancel\n");
    std::istringstream lines(outcome.out);
    std::string line;
    for (int i = 0; i < 2; ++i) std::getline(lines, line);
    const json items = json::parse(line).at("items");
    ASSERT_EQ(items.size(), 1U) << line;
    EXPECT_EQ(items.at(0).at("side"), side) << dpi;
  }
}

}  // namespace
