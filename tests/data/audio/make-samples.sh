#!/usr/bin/env bash
# Writes one tiny audio file per format the music scanner reads: 0.2 s of a 440 Hz tone, mono,
# at a low rate, without tags (the tests tag copies themselves). The files are committed; the
# build never runs this script.
#
#   tests/data/audio/make-samples.sh
#
# ffmpeg has no encoder for APE (Monkey's Audio): the WAV is compressed by the Java encoder of
# Debian's libjmac-java instead.
set -euo pipefail
cd "$(dirname "$0")"

tone=(-f lavfi -i "sine=frequency=440:duration=0.2:sample_rate=8000")
make() { # file, encoder options...
    local file=$1
    shift
    ffmpeg -hide_banner -loglevel error -y "${tone[@]}" -ac 1 -map_metadata -1 "$@" "$file"
}

make sample.flac -c:a flac
make sample.mp3 -c:a libmp3lame -b:a 8k -id3v2_version 0 -write_xing 0
make sample.ogg -c:a libvorbis -q:a 0
make sample.opus -c:a libopus -b:a 6k -ar 8000
make sample.m4a -c:a aac -b:a 8k
make sample.wma -c:a wmav2 -b:a 24k
# The WAV lasts 0.6 s (8-bit), so that its length rounds to one second.
ffmpeg -hide_banner -loglevel error -y -f lavfi -i "sine=frequency=440:duration=0.6:sample_rate=8000" \
    -ac 1 -map_metadata -1 -c:a pcm_u8 sample.wav
make sample.aiff -c:a pcm_s16be
make sample.wv -c:a wavpack
ffmpeg -hide_banner -loglevel error -y "${tone[@]}" -ac 1 -map_metadata -1 -c:a pcm_s16le tone.wav
java -jar /usr/share/java/jmac.jar c2 tone.wav sample.ape >/dev/null
rm tone.wav
