#pragma once

struct CommandContext;

// The move-selection tool's release: the floating selection is stamped where
// it is (and stays), then its outline moves by (dx, dy) image pixels and picks
// up the picture's pixels found under its mask's rectangle there, as one undo
// step of kind 8. A floating copy that cannot be made shows the system's
// message and changes nothing. Returns 1 when the selection moved.
int MoveSelectionOutline(CommandContext& context, int dx, int dy);
