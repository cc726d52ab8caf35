#pragma once

#include "albumgen/albumgen.h"
#include "albumgen/random.h"

#include <QStringList>
#include <vector>

// Names and words of the generated collection.
namespace albumgen::names {

// "The Beatles" sorts as "Beatles, The"; a person "Bob Dylan" as "Dylan, Bob".
QString sortName(const QString& name, bool person);

// Well-known performers first (non-ASCII letters, apostrophes, "The" bands), then invented
// people and bands, all names distinct; ids count from 1.
std::vector<Artist> artists(Random& random, int count);

QString person(Random& random);
QString albumTitle(Random& random);
QString trackTitle(Random& random);
// Prose of about the given number of characters, in paragraphs.
QString prose(Random& random, int characters);

const QStringList& labels();
const QStringList& genres();
const QStringList& versions();  // besides the empty version
const QStringList& locations();
const QStringList& ratings();  // TrackRating texts for ids 1..5

}  // namespace albumgen::names
