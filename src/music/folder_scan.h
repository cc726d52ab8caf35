#pragma once

#include <QString>
#include <QStringList>
#include <atomic>
#include <functional>

namespace music {

// What a scan reports while it runs, and how it is stopped: report (when set) hears the audio
// files found so far and those read so far; cancel (when set) stops the scan before the next
// file once it is true.
struct ScanProgress {
    std::function<void(qint64 found, qint64 read)> report;
    const std::atomic<bool>* cancel = nullptr;
};

struct ScanSummary {
    qint64 tracks = 0;  // of the album tables written; 0 when cancelled
    qint64 albums = 0;
    qint64 filesRead = 0;         // files opened by this scan: new and changed ones
    QStringList unreadableFiles;  // relative to the root: damaged or not audio
    bool cancelled = false;
};

// The audio files the scan reads: FLAC, MP3, Ogg Vorbis, Opus, M4A/AAC, WMA, WAV, AIFF, APE and
// WavPack, by extension in any case.
bool isAudioFileName(const QString& name);

// Scans the folder tree at root into the cache file (created when missing), reading only the
// audio files that are new or whose size or time changed, and, when the scan completes, writes
// the album tables of the whole tree into the cache. Hidden folders and files are left out and
// linked folders not followed. The tree is never written. A cancelled scan keeps the files read
// so far and the album tables of the last complete scan. Throws engine::JetError when root is no
// folder or the cache cannot be written; what was committed before stays whole.
ScanSummary scanFolder(const QString& root, const QString& cacheFile,
                       const ScanProgress& progress = {});

// "41,210 tracks in 3,402 albums; 12 files could not be read" (the second part only when some
// could not), "Scan cancelled after 120 files read" for a cancelled scan.
QString summaryLine(const ScanSummary& summary);

}  // namespace music
