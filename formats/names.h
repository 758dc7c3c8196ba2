// All names of the effect tab that plug-in, host, print side, layouts and tickets share: properties and their values,
// widget ids, settings, addresses, string-table references. Odd spellings ("Occurance") are part of the interface.
#pragma once

#include <algorithm>
#include <string_view>

namespace Formats {

using Name = std::u16string_view;

// Whether text is that name; names are ASCII, so the text may be UTF-8.
constexpr bool isName(std::string_view text, Name name) {
  return std::equal(text.begin(), text.end(), name.begin(), name.end(),
                    [](char byte, char16_t unit) { return static_cast<unsigned char>(byte) == unit; });
}

namespace Prop {
inline constexpr Name watermarkSel = u"WatermarkSel";
inline constexpr Name watermark = u"Watermark";
inline constexpr Name firstPageOnly = u"FirstPageOnly";
inline constexpr Name watermarkOccurance = u"WatermarkOccurance";
inline constexpr Name watermarkLayering = u"WatermarkLayering";
inline constexpr Name watermarkText = u"WatermarkText";
inline constexpr Name watermarkTextAngle = u"WatermarkTextAngle";
inline constexpr Name watermarkTextColour = u"WatermarkTextColour";
inline constexpr Name watermarkTextFont = u"WatermarkTextFont";
inline constexpr Name watermarkTextFontSize = u"WatermarkTextFontSize";
inline constexpr Name watermarkTextHeight = u"WatermarkTextHeight";
inline constexpr Name watermarkTextWidth = u"WatermarkTextWidth";
inline constexpr Name watermarkTextOutline = u"WatermarkTextOutline";
inline constexpr Name watermarkTextScale = u"WatermarkTextScale";
inline constexpr Name watermarkTextStyle = u"WatermarkTextStyle";
inline constexpr Name watermarkTextTransparency = u"WatermarkTextTransparency";

inline constexpr Name overlaySel = u"OverlaySel";
inline constexpr Name overlayImage = u"OverlayImage";
inline constexpr Name overlayOccurance = u"OverlayOccurance";
inline constexpr Name overlayLayering = u"OverlayLayering";
inline constexpr Name overlayImageCreate = u"OverlayImageCreate";
inline constexpr Name multipleOverlayDetails = u"MultipleOverlayDetails";
inline constexpr Name overlaySourceFileName = u"OverlaySourceFileName";
inline constexpr Name overlayName = u"OverlayName";
inline constexpr Name overlayImageName = u"OverlayImageName";
inline constexpr Name overlayDestFileName = u"OverlayDestFileName";
inline constexpr Name ovlDestCreated = u"OvlDestCreated";
inline constexpr Name cancelJob = u"CancelJob";
inline constexpr Name nin1 = u"Nin1";

// Properties of the printer and the job; read only.
inline constexpr Name modelNumber = u"ModelNumber";
inline constexpr Name modelSelection = u"ModelSelection";
inline constexpr Name product = u"Product";
inline constexpr Name outputPDL = u"OutputPDL";
inline constexpr Name driverTech = u"DriverTech";
inline constexpr Name printJob = u"PrintJob";
inline constexpr Name monochromeModel = u"MonochromeModel";

// Its options are the available colours of a watermark.
inline constexpr Name watermarkColor = u"Watermark-Color";
}  // namespace Prop

// Arguments of the XML customisation.
namespace Customisation {
inline constexpr Name xmlCustomisation = u"XMLCustomisation";
inline constexpr Name a3LD180Degree = u"A3LD180Degree";
}  // namespace Customisation

// Arguments of the profile export.
namespace ExportArgument {
inline constexpr Name includeUserdata = u"IncludeUserdata";
}  // namespace ExportArgument

namespace Value {
inline constexpr Name yes = u"True";
inline constexpr Name no = u"False";
inline constexpr Name none = u"None";
inline constexpr Name on = u"On";
inline constexpr Name off = u"Off";
inline constexpr Name perPage = u"PerPage";
inline constexpr Name watermark = u"Watermark";
inline constexpr Name overlayImage = u"OverlayImage";
inline constexpr Name multipleOverlayImage = u"MultipleOverlayImage";

// Values of OverlaySel, and of PrintJob while a job is captured as an overlay.
inline constexpr Name multiple = u"Multiple";
inline constexpr Name overlayJob = u"Overlay";

// The page rules that are not lists.
inline constexpr Name allPages = u"All";
inline constexpr Name evenPages = u"Even";
inline constexpr Name oddPages = u"Odd";

inline constexpr Name overlay = u"Overlay";
inline constexpr Name underlay = u"Underlay";

// Values of Nin1.
inline constexpr Name twoInOne = u"2in1";
inline constexpr Name fourInOne = u"4in1";

inline constexpr Name modelKVT = u"KVT";
inline constexpr Name familyTarra = u"Tarra";
inline constexpr Name familyVarnholt = u"Varnholt";
inline constexpr Name familyQuellspire = u"Quellspire";
inline constexpr Name productTev = u"Tev";
inline constexpr Name pclxl = u"PCLXL";
inline constexpr Name pscript = u"PSCRIPT";
inline constexpr Name colourBlack = u"Black";
inline constexpr Name colourNonBlack = u"Non-Black";

// The XML customisation writes its flags in lower case.
inline constexpr Name customisationTrue = u"true";
inline constexpr Name customisationFalse = u"false";
}  // namespace Value

// An effect that a check box of the tab turns on and off: its property, the value for on, and the id of the box. Off is
// Value::none.
struct PageEffect {
  Name property;
  Name on;
  Name box;

  friend constexpr bool operator==(const PageEffect&, const PageEffect&) = default;
};

namespace PageEffects {
inline constexpr PageEffect negativeImage{u"NegativeImage", u"Negative", u"ePTKWPageNegativeImage"};
inline constexpr PageEffect mirrorImage{u"MirrorImage", u"MirrorImage", u"ePTKWPageMirrorImage"};
inline constexpr PageEffect rotate180{u"Rotate180", u"Rotate180", u"chk_EffRot180Deg"};
inline constexpr PageEffect rotate180ForA3LD{u"Rotate180ForA3LD", u"Rotate180", u"chk_EffRot180DegForA3LD"};

// In the order in which the tab follows them. docs/adding-an-effect.md tells how to add one.
inline constexpr PageEffect all[] = {negativeImage, mirrorImage, rotate180, rotate180ForA3LD};
}  // namespace PageEffects

namespace WidgetId {
inline constexpr Name leftBox = u"effect_common_leftbox";

inline constexpr Name watermarkCaption = u"lbl_WM";
inline constexpr Name watermarkList = u"lst_selectedWatermark";
inline constexpr Name watermarkAdd = u"btn_WMAdd";
inline constexpr Name watermarkEdit = u"btn_WMEdit";
inline constexpr Name watermarkDelete = u"btn_WMDel";
inline constexpr Name watermarkFirstPage = u"ePTKWPageWatermark_PrintFirstPageOnly";
inline constexpr Name watermarkPerPage = u"ePTKWPageWatermark_PrintPerPage";

inline constexpr Name overlayCaption = u"lbl_Ovl";
inline constexpr Name overlayList = u"cmb_EffOverlay";
inline constexpr Name overlayDetails = u"but_EffDet";
inline constexpr Name overlayDelete = u"btn_OvlDel";
inline constexpr Name overlayLayering = u"ePTKWJobOverlayImage_Layering";
inline constexpr Name overlayPerPage = u"ePTKWJobOverlayImage_PrintPerPage";
inline constexpr Name overlayPicture = u"img_EffOverlay";

// In the question before a deletion: that another overlay takes the place of the deleted one.
inline constexpr Name otherForm = u"lbl_DeleteOtherForm";

// The dialog for several overlays. The pictures are in slot order, and so are the text boxes, which start at the third
// slot.
inline constexpr Name overlaySource = u"lib_MulOvlSource";
inline constexpr Name overlayAdd = u"btn_MulOvlAdd";
inline constexpr Name overlayAddManual = u"btn_MulOvlAddManual";
inline constexpr Name overlayClearChoice = u"cmb_MulOvlGroupsToClear";
inline constexpr Name overlayClear = u"but_MulOvlClear";
inline constexpr Name overlayDefaults = u"but_MulOvlRestDef";
inline constexpr Name overlayHelp = u"btn_MulOvlHelp";
inline constexpr Name firstMasterAll = u"rad1_All";
inline constexpr Name firstMasterEven = u"rad1_Even";
inline constexpr Name firstMasterOdd = u"rad1_Odd";
inline constexpr Name secondMasterEven = u"rad2_Even";
inline constexpr Name secondMasterOdd = u"rad2_Odd";
inline constexpr Name slotImages[] = {u"img_MulOvl1Image", u"img_MulOvl2Image", u"img_MulOvl3Image",
                                      u"img_MulOvl4Image", u"img_MulOvl5Image", u"img_MulOvl6Image",
                                      u"img_MulOvl7Image", u"img_MulOvl8Image"};
inline constexpr Name slotPages[] = {u"edt_MulOvl3Manual", u"edt_MulOvl4Manual", u"edt_MulOvl5Manual",
                                     u"edt_MulOvl6Manual", u"edt_MulOvl7Manual", u"edt_MulOvl8Manual"};

inline constexpr Name securityPatternEdit = u"but_EffSecPatEdt";
inline constexpr Name securityPatternDelete = u"but_EffSecPatDel";
inline constexpr Name securityPatternLayering = u"ePTKWJobOverlayImage_Layering_HSP_Overlay";

// The watermark editor. The buttons of the nine positions have the position codes as ids.
inline constexpr Name positions[] = {u"UL", u"UC", u"UR", u"CL", u"CC", u"CR", u"LL", u"LC", u"LR"};
inline constexpr Name preview = u"txt_EffWMText";
inline constexpr Name textBox = u"txt_EffWMTxtBox";
inline constexpr Name styleNameBox = u"txt_EffWMStyleName";
inline constexpr Name styleNameRow = u"wmStyleName";
inline constexpr Name colourCaption = u"txt_WMCol";
inline constexpr Name blackMark = u"wtmcol_k";
inline constexpr Name overwrittenName = u"txt_OverwriteName";
inline constexpr Name colourList = u"cmb_EffWMCol";
inline constexpr Name colourPicker = u"colpic_WMBrowse";
inline constexpr Name fontName = u"cmb_EffWMFonNam";
inline constexpr Name fontStyle = u"cmb_EffWMSty";
inline constexpr Name fontSize = u"txt_EffWMFonSiz";
inline constexpr Name angle = u"txt_EffWMAngle";
inline constexpr Name angleBar = u"scr_EffWMAngScroll";
inline constexpr Name printSolid = u"rad_EffWMSol";
inline constexpr Name printTransparent = u"rad_EffWMTrans";
inline constexpr Name printOutline = u"rad_EffWMDrawAsOut";
inline constexpr Name opacity = u"txt_EffWMOpa";
inline constexpr Name opacityBar = u"scr_EffWMOpaScroll";
inline constexpr Name opacityLeast = u"lblTrans0";
inline constexpr Name opacityMiddle = u"lblTrans50";
inline constexpr Name opacityMost = u"lblTrans100";
inline constexpr Name opacityUnit = u"lblTransUnit";
inline constexpr Name restoreDefaults = u"but_EffWMResDef";
}  // namespace WidgetId

namespace Setting {
inline constexpr Name uiMode = u"UIMode";
inline constexpr Name userPath = u"kilnworks.user.path";
inline constexpr Name userProfile = u"kilnworks.user.userprofile";
inline constexpr Name settingsFolder = u"kilnworks.pdlsettings.folder";
inline constexpr Name localDataPath = u"kilnworks.user.localdata.path";
inline constexpr Name userDataSupport = u"kilnworks.tips.userdata.support";
inline constexpr Name defaultUserDataHide = u"kilnworks.defaultuserdata.hide";
inline constexpr Name a3LDRotation = u"kilnworks.A3LDRotate180.rotation";
inline constexpr Name styleNameSupport = u"kilnworks.watermark.stylename.support";
}  // namespace Setting

namespace Address {
inline constexpr Name tabLayout = u"chrome://effect/content/tab_effect.xul";
inline constexpr Name ticketSchema = u"chrome://effect/content/schema_effect.xml";
inline constexpr Name builtInWatermarks = u"chrome://effect/content/effect.xml";
inline constexpr Name watermarkEditor = u"chrome://effect/content/dlg_watermark.xul";
inline constexpr Name overlayFull = u"chrome://effect/content/dlg_overlayfull.xul";
inline constexpr Name multipleOverlay = u"chrome://effect/content/dlg_multipleoverlay.xul";
inline constexpr Name confirmDelete = u"chrome://base/content/dlg_confirmdelete.xul";
inline constexpr Name overwrite = u"chrome://base/content/dlg_overwrite.xul";
inline constexpr Name blankPage = u"chrome://effect/content/bitmaps/xx02_NOI.bmp";
inline constexpr Name missingThumbnail = u"chrome://effect/content/bitmaps/ovl_error.bmp";
inline constexpr Name baseHelp = u"chrome://base/locale/help.chm";
inline constexpr Name downloadedIcon = u"chrome://base/content/bitmaps/tips_UD_tb.bmp";
}  // namespace Address

namespace Token {
inline constexpr Name none = u"$IDS_NONE;";
inline constexpr Name noOverlay = u"$IDS_CMBWMARK_NONE;";
inline constexpr Name multipleOverlays = u"$IDS_TWOOVERLAY;";
inline constexpr Name rotate180ForA3LD = u"$IDS_EFFECT_ROTATE_180_A3_LD;";
inline constexpr Name rotate180ForA3LDByController = u"$IDS_EFFECT_ROTATE_180_A3_LD_CONTROLLER;";
}  // namespace Token

// The colour of downloaded entries in a list, besides the icon.
inline constexpr Name downloadedColour = u"#FF0000";

// The file name of the overlay index.
inline constexpr Name overlayIndexName = u"ovlNmFl.flo";

// The resource name of the blank page in a free slot, and the item of a slot's context menu that clears it.
inline constexpr Name blankBitmap = u"BlankBitmap";
inline constexpr Name clearItem = u"clear";

// The items of the list of slots to clear, in slot order.
inline constexpr Name clearChoices[] = {u"ClearMaster1", u"ClearMaster2", u"ClearManual1", u"ClearManual2",
                                        u"ClearManual3", u"ClearManual4", u"ClearManual5", u"ClearManual6"};

// The attribute that lists the names of locked properties.
inline constexpr Name lockAttribute = u"lock";

// The resource scope shared by all plug-ins.
inline constexpr Name globalScope = u"global";

// The tab's id, which is also its help topic.
inline constexpr Name tabId = u"pro_tab_effect";

// The help topic of the dialog for several overlays.
inline constexpr Name multipleOverlayTopic = u"5100";

inline constexpr std::string_view pluginName = "effect";

inline constexpr std::string_view modeDocProp = "DocProp";
inline constexpr std::string_view modePDC = "PDC";
inline constexpr std::string_view modePrePrint = "PrePrint";

}  // namespace Formats
