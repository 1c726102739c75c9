/**
 * @file
 * The verbs of ovinfo. Each takes the words behind its name and gives the exit code.
 */
#ifndef OVINFO_COMMANDS_H
#define OVINFO_COMMANDS_H

#include <QtCore/QStringList>

int cameraCommand(const QStringList& words);
int checkCommand(const QStringList& words);
int diffCommand(const QStringList& words);
int getCommand(const QStringList& words);
int newCommand(const QStringList& words);
int presetsCommand(const QStringList& words);
int setCommand(const QStringList& words);
int showCommand(const QStringList& words);
int spectralCommand(const QStringList& words);
int studyCommand(const QStringList& words);

#endif
