#pragma once

#include <QtGlobal>

// What a peer on the bus can make this process keep, and how long it may take its time.
namespace graph {

// Of one service.
constexpr int maxItems = 1 << 14; // besides those that this process has asked for
constexpr int maxNameLength = 255;
constexpr int maxTextLength = 1 << 20;             // characters of a text, or of all texts of a list
constexpr int maxElements = 1 << 24;               // of an array, 128 MiB
constexpr qint64 maxItemBytes = qint64(256) << 20; // all values and arrays, names included
constexpr int maxUnfinishedArrays = 16;
constexpr int maxUnfinishedWait = 10000; // ms until the next part
// Of all services together.
constexpr qint64 maxUnfinishedBytes = qint64(256) << 20;

// The bus takes no array of more than 64 MiB and no message of more than 128 MiB.
constexpr int maxPartElements = 1 << 21;
constexpr int maxAnsweredElements = 1 << 22;
constexpr qint64 maxAnsweredValueBytes = qint64(32) << 20;
// What may wait to be written to the bus before changes are held back, and answers with them.
constexpr qint64 maxWaitingBytes = qint64(32) << 20;
constexpr int maxWaitingCalls = 1024;

// The same complaint about a service is repeated after this time at the earliest.
constexpr int complaintInterval = 60000; // ms

} // namespace graph
