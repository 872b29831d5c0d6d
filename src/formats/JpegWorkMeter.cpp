#include "formats/JpegWorkMeter.h"

#include <algorithm>
#include <jerror.h>

void JpegWorkMeter::Install(j_decompress_ptr info) {
    manager = jpeg_progress_mgr{};
    manager.progress_monitor = Monitor;
    budget = 0;
    spent = 0;
    lastScan = 0;
    lastRow = 0;
    info->progress = &manager;
}

void JpegWorkMeter::Start(j_decompress_ptr info) {
    std::uint64_t blocks = 0;
    for (int c = 0; c < info->num_components; ++c) {
        const jpeg_component_info& component = info->comp_info[c];
        blocks += static_cast<std::uint64_t>(component.width_in_blocks) * component.height_in_blocks;
    }
    budget = kWholePasses * DCTSIZE2 * blocks;
}

void JpegWorkMeter::Monitor(j_common_ptr common) {
    if (!common->is_decompressor) {
        return;
    }
    auto* info = reinterpret_cast<j_decompress_ptr>(common);
    auto* meter = reinterpret_cast<JpegWorkMeter*>(common->progress);
    meter->Count(info);
    if (info->input_scan_number > kMostScans || (meter->budget != 0 && meter->spent > meter->budget)) {
        common->err->msg_code = JERR_BAD_PROGRESSION;
        common->err->error_exit(common);
    }
}

// libjpeg calls the monitor before it reads each row of blocks of a scan:
// the row about to be read is charged once, at the width of the scan's band.
void JpegWorkMeter::Count(j_decompress_ptr info) {
    const JDIMENSION row = info->input_iMCU_row;
    if ((info->input_scan_number == lastScan && row == lastRow) || row >= info->total_iMCU_rows) {
        return;
    }
    lastScan = info->input_scan_number;
    lastRow = row;
    const auto band = static_cast<std::uint64_t>(info->Se - info->Ss + 1);
    for (int c = 0; c < info->comps_in_scan; ++c) {
        const jpeg_component_info* component = info->cur_comp_info[c];
        const JDIMENSION top = row * static_cast<JDIMENSION>(component->v_samp_factor);
        const JDIMENSION blockRows =
            std::min(static_cast<JDIMENSION>(component->v_samp_factor),
                     component->height_in_blocks - std::min(top, component->height_in_blocks));
        spent += static_cast<std::uint64_t>(component->width_in_blocks) * blockRows * band;
    }
}
