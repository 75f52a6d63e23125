// qbos.h - the operating-system layer shared by the package's programs.
#pragma once

#include <cstdint>
#include <cstdio>
#include <ctime>

void OSInit();
void OSCleanUp();
int32_t OSSetEnv(const char *name, const char *value);
const char *OSGetEnv(const char *name);
FILE *OSPipeOpen(const char *command, const char *mode);
int32_t OSPipeClose(FILE *pipe);
int32_t OSSendEmail(const char *mailer, const char *to, const char *cc, const char *bcc, const char *subject,
                    const char *body);
int32_t OSRenameFile(const char *from, const char *to);
int32_t OSRemoveFile(const char *path);
int32_t OSRemoveAll(const char *dir);
int32_t OSRemoveMatch(const char *dir, const char *pattern);
int32_t OSChangeMod(const char *path, const char *modeText);
int32_t OSExecute(const char *path, ...);
char *OSCorrectPath(char *path);
uint32_t OSHexToUL(const char *text);
double OSDiffTime(time_t t1, time_t t0);
int32_t OSSaveProcessID(FILE *file);
