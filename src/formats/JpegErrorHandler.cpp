#include "formats/JpegErrorHandler.h"

#include <jerror.h>

namespace {
JpegErrorHandler* HandlerOf(j_common_ptr common) {
    return reinterpret_cast<JpegErrorHandler*>(common->err);
}

[[noreturn]] void JumpBack(j_common_ptr common) {
    std::longjmp(HandlerOf(common)->jump, 1);
}

bool IsCorruptDataWarning(int code) {
    switch (code) {
    case JWRN_JPEG_EOF:
    case JWRN_HIT_MARKER:
    case JWRN_HUFF_BAD_CODE:
    case JWRN_ARITH_BAD_CODE:
    case JWRN_MUST_RESYNC:
    case JWRN_NOT_SEQUENTIAL:
        return true;
    default:
        return false;
    }
}

void OnMessage(j_common_ptr common, int level) {
    // Negative levels are warnings; a picture with missing or broken data is
    // refused rather than shown grey.
    if (level < 0 && IsCorruptDataWarning(common->err->msg_code)) {
        JumpBack(common);
    }
}

void Silent(j_common_ptr) {}
} // namespace

void JpegErrorHandler::Install(jpeg_common_struct* common) {
    common->err = jpeg_std_error(&manager);
    manager.error_exit = JumpBack;
    manager.emit_message = OnMessage;
    manager.output_message = Silent;
}
