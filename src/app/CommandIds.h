#pragma once

// Command ids of the menus, accelerators and the tool palette.
namespace cmd {

// File
constexpr int kNew = 57600;
constexpr int kOpen = 57601;
constexpr int kSave = 57603;
constexpr int kSaveAs = 57604;
constexpr int kRevert = 32836;
constexpr int kSendMail = 32870;
constexpr int kSendInfrared = 32871;
constexpr int kOptions = 32876;
constexpr int kAbout = 57664;
constexpr int kExit = 32774;
constexpr int kHelp = 57670;
constexpr int kRecentFirst = 57616; // "Open Recent" entries 57616..57623
constexpr int kRecentCount = 8;

// Edit
constexpr int kUndo = 57643;
constexpr int kRedo = 57644;
constexpr int kCut = 57635;
constexpr int kCopy = 57634;
constexpr int kPaste = 57637;
constexpr int kPasteAsNew = 32856;
constexpr int kClear = 57632;
constexpr int kCrop = 32857;
constexpr int kFill = 32858;
constexpr int kSelectAll = 57642;
constexpr int kSelectNone = 32859;
constexpr int kInvertSelection = 32860;
constexpr int kPutFloating = 32861;
constexpr int kDiscardFloating = 32862;

// View
constexpr int kActualImage = 32833;
constexpr int kZoomIn = 32834;
constexpr int kZoomOut = 32835;
constexpr int kFullScreen = 32837;
constexpr int kImageInformation = 32838;
constexpr int kSystemInformation = 32839;
constexpr int kToolBar = 32840;
constexpr int kFitInWindow = 32880;
constexpr int kPixelGrid = 32881;
// "x 2".."x 8", "x 16", "x 32" and "/ 2".."/ 8": note that there is no id
// between x 4 and x 5.
constexpr int kMagnifyIds[9] = {32841, 32842, 32843, 32845, 32846, 32847, 32848, 32882, 32883};
constexpr int kReduceIds[7] = {32849, 32850, 32851, 32852, 32853, 32854, 32855};

// The current-tool-attribute request of the palette's options button.
constexpr int kToolAttributeRequest = 0x0400 + 200;

} // namespace cmd
