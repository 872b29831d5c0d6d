#include "dialogs/LivePreview.h"

#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "image/CUndoHistory.h"
#include "ops/CommandHandOver.h"
#include "platform/WaitCursor.h"

#include <QThread>

#include <cstring>

LivePreview::LivePreview(CommandContext& ctx, QObject* parent) : QObject(parent), m_ctx(ctx) {}

LivePreview::~LivePreview() {
    Cancel();
}

int LivePreview::Begin() {
    const CDibImage* source = m_ctx.doc.GetImage();
    if (IsOpen() || source == nullptr || source->BitsPerPixel() != 24) {
        return 0;
    }
    auto shown = ops::CreateResultImage(*source, source->Width(), source->Height());
    if (!shown) {
        return 0;
    }
    // Until the first result is ready the picture shows unchanged.
    std::memcpy(shown->MutableBits(), source->Bits(), source->ImageBytes());
    // Without room for a second buffer the preview is computed in place.
    m_back = ops::CreateBlankLike(*source, source->Width(), source->Height());
    m_source = m_ctx.doc.SetImage(std::move(shown));
    m_requested = m_running = m_shown = 0;
    return 1;
}

void LivePreview::Request(Compute compute) {
    if (!IsOpen()) {
        return;
    }
    m_latest = std::move(compute);
    ++m_requested;
    if (!m_back) {
        ComputeHere();
    } else if (!Busy()) {
        StartWorker();
    }
}

void LivePreview::StartWorker() {
    m_running = m_requested;
    const std::uint64_t generation = m_running;
    m_worker = QThread::create(
        [compute = m_latest, source = m_source.get(), target = m_back.get()] { compute(*source, *target); });
    connect(m_worker, &QThread::finished, this, [this, generation] { OnWorkerDone(generation); });
    m_worker->start();
}

void LivePreview::OnWorkerDone(std::uint64_t generation) {
    if (m_worker == nullptr || generation != m_running) {
        return; // already collected by WaitForWorker
    }
    WaitForWorker();
    if (m_requested > m_shown) {
        StartWorker();
    }
}

void LivePreview::WaitForWorker() {
    if (m_worker == nullptr) {
        return;
    }
    m_worker->wait();
    delete m_worker;
    m_worker = nullptr;
    ShowBackBuffer(m_running);
}

void LivePreview::ShowBackBuffer(std::uint64_t generation) {
    m_back = m_ctx.doc.SetImage(std::move(m_back));
    m_shown = generation;
    ++m_shownCount;
    m_ctx.doc.UpdateAllViews(CBriselDoc::kHintRepaint);
    emit ResultShown();
}

void LivePreview::ComputeHere() {
    platform::WaitCursor wait;
    m_latest(*m_source, *m_ctx.doc.GetImage());
    m_shown = m_requested;
    ++m_shownCount;
    m_ctx.doc.UpdateAllViews(CBriselDoc::kHintRepaint);
    emit ResultShown();
}

void LivePreview::Finish() {
    if (!IsOpen()) {
        return;
    }
    {
        platform::WaitCursor wait;
        WaitForWorker();
        if (m_shown != m_requested) {
            ComputeHere();
        }
    }
    m_back.reset();
    m_ctx.doc.SetModifiedFlag();
    m_ctx.undo.RecordObjects(m_ctx.doc, std::move(m_source), nullptr, 1, 0);
    m_ctx.doc.UpdateAllViews(CBriselDoc::kHintRepaint);
}

void LivePreview::Cancel() {
    if (!IsOpen()) {
        return;
    }
    if (m_worker != nullptr) {
        m_worker->wait();
        delete m_worker;
        m_worker = nullptr;
    }
    m_back.reset();
    m_ctx.doc.SetImage(std::move(m_source)); // the result on show is dropped
    m_ctx.doc.UpdateAllViews(CBriselDoc::kHintRepaint);
}
