#pragma once
// clsDIALOGS: the common dialogs (file names, colour, font, page setup,
// printer, folder choice) over the platform's IDialogHost, remembering
// between runs the folders, files and filter last used, in the section
// "DIALOGS" of a profile file (an INI file).
//
// Properties are pairs of methods named as the property: `x()` reads,
// `x(value)` writes; a property that can only be read or only be written has
// only that half. Folders always end with "/".
//
// The profile keeps seven keys: "LastOpenFilter", "LastSaveFilter",
// "LastOpenFile", "LastSaveFile", "LastOpenDir", "LastSaveDir" and
// "InitialDir". They are read when the object is made, and written (when
// blnUsePersistence is on) after every dialog that returned a name and again
// when the object ends, so a crash loses nothing. The file is replaced
// atomically; other sections and keys in it are kept.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/Ini.h"
#include "forms/Ports.h"

class clsDIALOGS {
public:
    // host: the platform's dialogs; sysbox: for failure reports;
    // programDir: the program's folder (default folders); profilePath: the
    // profile file.
    clsDIALOGS(IDialogHost* host, ISystemMessageBox* sysbox, IFiles& files, std::string programDir,
               std::string profilePath);
    ~clsDIALOGS();
    clsDIALOGS(const clsDIALOGS&) = delete;
    clsDIALOGS& operator=(const clsDIALOGS&) = delete;

    // ----------------------------------------------------------------------
    // Behaviour.
    bool blnShowErrorMessages() const { return blnShowErrorMessages_; }
    void blnShowErrorMessages(bool v) { blnShowErrorMessages_ = v; }
    bool blnUsePersistence() const { return blnUsePersistence_; }
    void blnUsePersistence(bool v) { blnUsePersistence_ = v; }

    // Page setup: paper size (read) and margins with their lower limits, in
    // thousandths of an inch.
    std::int32_t lngPaperWidth() const { return lngPaperWidth_; }
    std::int32_t lngPaperHeight() const { return lngPaperHeight_; }
    std::int16_t intLeftMargin() const { return intLeftMargin_; }
    void intLeftMargin(std::int16_t v) { intLeftMargin_ = v; }
    std::int16_t intRightMargin() const { return intRightMargin_; }
    void intRightMargin(std::int16_t v) { intRightMargin_ = v; }
    std::int16_t intTopMargin() const { return intTopMargin_; }
    void intTopMargin(std::int16_t v) { intTopMargin_ = v; }
    std::int16_t intBottomMargin() const { return intBottomMargin_; }
    void intBottomMargin(std::int16_t v) { intBottomMargin_ = v; }
    std::int16_t intMinMarginLeft() const { return intMinMarginLeft_; }
    void intMinMarginLeft(std::int16_t v) { intMinMarginLeft_ = v; }
    std::int16_t intMinMarginRight() const { return intMinMarginRight_; }
    void intMinMarginRight(std::int16_t v) { intMinMarginRight_ = v; }
    std::int16_t intMinMarginTop() const { return intMinMarginTop_; }
    void intMinMarginTop(std::int16_t v) { intMinMarginTop_ = v; }
    std::int16_t intMinMarginBottom() const { return intMinMarginBottom_; }
    void intMinMarginBottom(std::int16_t v) { intMinMarginBottom_ = v; }

    // Font choice results.
    std::int32_t lngFontType() const { return lngFontType_; }
    const std::string& strFontStyle() const { return strFontStyle_; }  // "Bold", "Italic" or "Regular"
    const std::string& strFontFaceName() const { return strFontFaceName_; }
    std::int32_t lngFontColor() const { return lngFontColor_; }
    std::int32_t lngFontSize() const { return lngFontSize_; }
    bool blnIsFontBold() const { return blnIsFontBold_; }
    bool blnIsFontItalic() const { return blnIsFontItalic_; }

    // Colour choice: the starting colour and the result, &HBBGGRR.
    std::int32_t lngColor() const { return lngColor_; }
    void lngColor(std::int32_t v) { lngColor_ = v; }

    // File name dialogs.
    std::int32_t lngNumFilesSelected() const { return lngNumFilesSelected_; }
    bool blnCreatePrompt() const { return blnCreatePrompt_; }
    void blnCreatePrompt(bool v) { blnCreatePrompt_ = v; }
    std::int32_t lngHWnd() const { return lngHWnd_; }
    void lngHWnd(std::int32_t v) { lngHWnd_ = v; }
    std::int32_t lngMaxFileNameBuffer() const { return lngMaxFileNameBuffer_; }
    void lngMaxFileNameBuffer(std::int32_t v) { lngMaxFileNameBuffer_ = v; }
    void strTitle(const std::string& v) { strTitle_ = v; }
    const std::string& strTitle() const { return strTitle_; }
    void strDefaultExt(const std::string& v) { strDefaultExt_ = v; }  // kept; no dialog is given it
    void blnAllowMultipleFileSelect(bool v) { blnAllowMultipleFileSelect_ = v; }
    bool blnAllowMultipleFileSelect() const { return blnAllowMultipleFileSelect_; }
    // Filter pairs "Description|pattern|Description|pattern": every "|"
    // becomes a NUL, and the string ends with two NULs.
    void strFilter(const std::string& v);
    const std::string& strFilterRaw() const { return strFilter_; }

    // What was chosen last, remembered between runs.
    std::int32_t lngLastOpenFilter() const { return lngLastOpenFilter_; }
    std::int32_t lngLastSaveFilter() const { return lngLastSaveFilter_; }
    const std::string& strLastOpenFile() const { return strLastOpenFile_; }
    const std::string& strLastSaveFile() const { return strLastSaveFile_; }
    const std::string& strLastOpenFolder() const { return strLastOpenFolder_; }
    const std::string& strLastSaveFolder() const { return strLastSaveFolder_; }
    // The folder a dialog starts in; when empty, the last folder of the
    // dialog's kind counts. After each file dialog it takes that folder.
    void strInitialDir(const std::string& v) { strInitialDir_ = v; }
    const std::string& strInitialDir() const { return strInitialDir_; }

    // The last failure: its code and text ("N/A" before any).
    std::int32_t lngDialogError() const { return lngDialogError_; }
    const std::string& strDialogError() const { return strDialogError_; }

    // ----------------------------------------------------------------------
    // Operations. The name argument of the file dialogs is not used. Each
    // returns the chosen path, or "" when cancelled or failed.
    std::string strGetOpenFileName(const std::string& name);
    std::string strGetNewFileName(const std::string& name);  // the file need not exist
    std::string strGetSaveFileName(const std::string& name);
    // With multiple selection and more than one file chosen, the open
    // dialogs return the folder; the file names (without folder) are in the
    // array, read with fstrReturnSingleFileName(0 .. lngNumFilesSelected - 1).
    std::string fstrReturnSingleFileName(std::int32_t index) const;

    std::int32_t lngChooseColor();      // the colour chosen, or lngColor as it was
    bool blnChooseFont();               // true unless cancelled
    bool blnPageSetup();                // true unless cancelled
    bool blnPrintDialog();              // true unless cancelled
    std::string fstrBrowseForFolder();  // the folder chosen, or ""

    // ----------------------------------------------------------------------
    // The profile file and its seven keys.
    const std::string& ProfilePath() const { return profilePath_; }
    // Writes the seven keys now; false when the file couldn't be replaced.
    bool SaveProfile();

    // The text of a failure code ("General Codes Failure" for 0, which is an
    // ordinary cancel; "Unknown Error" for codes not in the table).
    static std::string ErrorText(std::int32_t code);
    // "|" to NUL, then two NULs at the end unless there already.
    static std::string FilterWithNulls(const std::string& filter);
    // The (description, pattern) pairs of a NUL-separated filter string; the
    // list ends at the first empty part.
    static std::vector<std::pair<std::string, std::string>> FilterPairs(const std::string& nulFilter);

    static constexpr int kMaxSelectedFiles = 255;
    static constexpr int kMultiSelectBuffer = 2048;

private:
    enum class FileKind { Open, OpenNew, Save };
    enum class Trapped { Done, Skipped, Left };

    std::string FileDialog(FileKind kind);
    void FailureStep(std::int32_t code);
    template <class Step>
    Trapped Trap(const char* title, Step step);
    void LoadProfile();
    std::optional<IniText> ReadProfile();

    IDialogHost* host_;
    ISystemMessageBox* sysbox_;
    IFiles& files_;
    std::string programDir_, profilePath_;

    bool blnShowErrorMessages_ = true;
    bool blnUsePersistence_ = true;
    std::int32_t lngPaperWidth_ = 8500, lngPaperHeight_ = 11000;
    std::int16_t intLeftMargin_ = 500, intRightMargin_ = 500, intTopMargin_ = 500, intBottomMargin_ = 500;
    std::int16_t intMinMarginLeft_ = 250, intMinMarginRight_ = 250, intMinMarginTop_ = 250, intMinMarginBottom_ = 250;
    std::int32_t lngFontType_ = 1024;
    std::string strFontStyle_, strFontFaceName_;
    std::int32_t lngFontColor_ = 0;
    std::int32_t lngFontSize_ = 10;
    bool blnIsFontBold_ = false, blnIsFontItalic_ = false;
    std::int32_t lngColor_ = 192 | (192 << 8) | (192 << 16);
    std::int32_t lngNumFilesSelected_ = 0;
    bool blnCreatePrompt_ = false;
    std::int32_t lngHWnd_ = 0;  // 0: the desktop
    std::int32_t lngMaxFileNameBuffer_ = 250;
    std::string strTitle_, strDefaultExt_, strFilter_;
    bool blnAllowMultipleFileSelect_ = false;
    std::int32_t lngLastOpenFilter_ = 1, lngLastSaveFilter_ = 1;
    std::string strLastOpenFile_, strLastSaveFile_;
    std::string strLastOpenFolder_, strLastSaveFolder_;
    std::string strInitialDir_;
    std::int32_t lngDialogError_ = 0;
    std::string strDialogError_ = "N/A";
    std::array<std::string, kMaxSelectedFiles> FileNames_;
};
