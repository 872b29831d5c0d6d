#pragma once

#include "image/CDibImage.h"
#include "image/DibTypes.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// The single document: the picture, its selection mask and, while a selection
// floats, the floating pixels with their own mask and position.
//
// Ownership: every image is held by exactly one owner. A setter returns the
// image it replaced; dropping the result destroys it, keeping it (to hand to
// the undo history, or to put back later) keeps it alive.
class CBriselDoc {
public:
    using ImagePtr = std::unique_ptr<CDibImage>;
    using ViewObserver = std::function<void(int hint)>;

    // Hints passed to the views with an update.
    static constexpr int kHintRepaint = 0;
    static constexpr int kHintImageSize = 1;

    CBriselDoc() = default;
    CBriselDoc(const CBriselDoc&) = delete;
    CBriselDoc& operator=(const CBriselDoc&) = delete;

    // The current editing target: the floating pixels and mask while a
    // selection floats, else the picture and the selection mask.
    CDibImage* GetImage() const;
    CDibImage* GetMask() const;
    CDibImage* GetPicture() const { return m_pImage.get(); }
    CDibImage* GetSelectionMask() const { return m_pMask.get(); }
    CDibImage* GetFloatImage() const { return m_pFloatImage.get(); }
    CDibImage* GetFloatMask() const { return m_pFloatMask.get(); }

    ImagePtr SetImage(ImagePtr image);
    ImagePtr SetPicture(ImagePtr image);
    ImagePtr SetFloatImage(ImagePtr image);
    ImagePtr SetMask(ImagePtr image);
    ImagePtr SetFloatMask(ImagePtr image);

    int FloatX() const { return m_xFloat; }
    int FloatY() const { return m_yFloat; }
    void SetFloatPosition(int x, int y);
    // Set while a floating selection has not been stamped or discarded.
    bool IsFloating() const { return m_bFloating; }
    // The floating rectangle (right and bottom exclusive), or 0,0,0,0.
    ImageRect GetFloatRect() const;
    // Sets the picture's resolution and returns the old horizontal one.
    int SetResolution(int dpi);

    // Floating selection.
    ImagePtr CopyPictureRect(int x0, int y0, int x1, int y1) const;
    int CreateFloating(int x0, int y0, int x1, int y1, bool emptyMask);
    int FloatSelection();
    void MergeFloatMask(bool invert);
    int PutFloating(bool keep);
    void DiscardFloating();

    // Replaces the picture by a new one built from `header`, with the colour
    // table of `imageType` (BuildPalette kind) and every pixel `contents`.
    int NewImage(const BitmapInfoHeader& header, int imageType, ColorWord contents);
    // Destroys all four images and clears the floating position.
    void DeleteContents();

    bool IsModified() const { return m_bModified; }
    void SetModifiedFlag(bool modified = true);
    // Called whenever the modified flag changes (the window's caption follows it).
    void SetModifiedListener(std::function<void()> listener) { m_modifiedListener = std::move(listener); }
    // How often the document was marked unmodified (saved, opened, made new):
    // the undo history learns from it which of its states the file holds.
    std::uint64_t CleanMarks() const { return m_cleanMarks; }
    bool IsReduced() const { return m_bReduced; }
    void SetReduced(bool reduced) { m_bReduced = reduced; }
    // The file at the path has transparent or translucent pixels, which the
    // picture shows laid over white: saving over it loses them.
    bool FileHasTransparency() const { return m_fileTransparent; }
    void SetFileHasTransparency(bool transparent) { m_fileTransparent = transparent; }
    const std::string& PathName() const { return m_path; }
    void SetPathName(const std::string& path) { m_path = path; }
    const std::string& Title() const { return m_title; }
    void SetTitle(const std::string& title) { m_title = title; }

    // Views register here to hear about changes; the core never knows widgets.
    int AddViewObserver(ViewObserver observer);
    void RemoveViewObserver(int id);
    void UpdateAllViews(int hint = kHintRepaint) const;

private:
    void ClearMaskRect(const ImageRect& box);

    ImagePtr m_pImage;
    ImagePtr m_pFloatImage;
    ImagePtr m_pMask;
    ImagePtr m_pFloatMask;
    int m_xFloat = 0;
    int m_yFloat = 0;
    bool m_bFloating = false;
    bool m_bReduced = false;
    bool m_bModified = false;
    bool m_fileTransparent = false;
    std::function<void()> m_modifiedListener;
    std::uint64_t m_cleanMarks = 0;
    std::string m_path;
    std::string m_title;
    std::vector<std::pair<int, ViewObserver>> m_observers;
    int m_nextObserverId = 1;
};
