#pragma once

#include "script/EngineOperations.h"

// The handlers of the command-line operations (EngineOperations.cpp holds
// their table). Each runs one parsed step on the document: 1 done, 0 not
// possible.
int RunPen(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunEraser(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunFill(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunLine(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunRect(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunEllipse(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunBrush(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunTablet(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunClone(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunGradient(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunSelectRect(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunSelectEllipse(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunWand(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunMoveFloating(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunFillSelection(CommandContext& context, const EngineOptions& options, const EngineStep& step);
int RunEditCommand(int id, CommandContext& context, const EngineOptions& options, const EngineStep& step);
