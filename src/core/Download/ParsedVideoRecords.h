// The page-analysis library's result list turned into model objects.
#pragma once

#include <QList>
#include <QString>

#include "Download/DownloadVideoInfo.h"
#include "parseurl.h"

// One DownloadVideoInfo per record with an address, in list order: spaces in
// the addresses become "%20", the title is decoded, a missing extension or
// thumbnail becomes the empty string.
QList<DownloadVideoInfo> downloadVideoInfosOf(const ParsedVideoEntry* head);

// Releases each record with free(), walking the chain; the strings they
// point to stay the library's.
void freeParsedVideoEntries(ParsedVideoEntry* head);

// The title as a file name can carry it: "&amp;", "&gt;", "&lt;", "&quot;"
// and "&apos;" decoded one after another, "&iquest;" made a backquote, and
// every "/" a space. Null gives the empty string.
QString decodedVideoTitle(const char* title);
