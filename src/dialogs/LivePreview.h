#pragma once

#include "image/CommandContext.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <memory>

class CDibImage;
class QThread;

// Shows a command's result in the document while its dialog is open. The
// result is computed from the untouched source away from the event loop, on a
// second buffer, and put on show when it is ready; a request made while one is
// being computed replaces any other waiting one, so dragging a track bar over a
// large photo only ever computes the newest values. Finish makes sure the
// result of the last request is the one shown, then keeps it with one undo
// step; Cancel puts the source back exactly and records nothing.
class LivePreview : public QObject {
    Q_OBJECT
public:
    // Fills `target` (the source's size) from `source`; runs on a worker thread.
    using Compute = std::function<void(const CDibImage& source, CDibImage& target)>;

    explicit LivePreview(CommandContext& ctx, QObject* parent = nullptr);
    ~LivePreview() override;

    // Puts a copy of the editing target on show in its place; 0 (after string
    // 65) when the result image cannot be created.
    int Begin();
    void Request(Compute compute);
    void Finish();
    void Cancel();

    bool IsOpen() const { return m_source != nullptr; }
    bool Busy() const { return m_worker != nullptr; }
    // How many results have been put on show (tests follow the preview by it).
    int ShownCount() const { return m_shownCount; }

signals:
    void ResultShown();

private:
    void StartWorker();
    void OnWorkerDone(std::uint64_t generation);
    void WaitForWorker();
    void ShowBackBuffer(std::uint64_t generation);
    void ComputeHere();

    CommandContext& m_ctx;
    std::unique_ptr<CDibImage> m_source; // held here while the result is shown
    std::unique_ptr<CDibImage> m_back;   // the worker's target; null: compute in place
    Compute m_latest;
    QThread* m_worker = nullptr;
    std::uint64_t m_requested = 0; // generation of the newest request
    std::uint64_t m_running = 0;   // generation the worker computes
    std::uint64_t m_shown = 0;     // generation on show
    int m_shownCount = 0;
};
