// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What the verbs of ovinfo do. Each takes what it is asked for and gives the exit code.
 */
#ifndef OVINFO_COMMANDS_H
#define OVINFO_COMMANDS_H

#include "Request.h"

ExitCode cameraCommand(const Request& request);
ExitCode checkCommand(const Request& request);
ExitCode diffCommand(const Request& request);
ExitCode getCommand(const Request& request);
ExitCode indexCommand(const Request& request);
ExitCode newCommand(const Request& request);
ExitCode presetsCommand(const Request& request);
ExitCode queryCommand(const Request& request);
ExitCode reportCommand(const Request& request);
ExitCode setCommand(const Request& request);
ExitCode showCommand(const Request& request);
ExitCode spectralCommand(const Request& request);
ExitCode stripCommand(const Request& request);
ExitCode studyCommand(const Request& request);
ExitCode unsetCommand(const Request& request);

#endif
