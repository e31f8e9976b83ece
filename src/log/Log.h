#ifndef TELVO_SRC_LOG_LOG_H
#define TELVO_SRC_LOG_LOG_H

/**
 * Sends one line to the debugger output: the formatted text cut at 997 characters, trailing white
 * space stripped, carriage return and line feed appended. Any thread may call it.
 * Use LogText or logLine, which check the conversions against the arguments.
 */
void writeLog(const char* format, ...);

#endif
