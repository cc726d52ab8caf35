#include "albumgen/names.h"

#include <QSet>

namespace albumgen::names {
namespace {

struct Known {
    const char* name;
    bool person;
};

const Known kKnownArtists[] = {
    {"The Beatles", false},
    {"Die Ärzte", false},
    {"Björk", false},
    {"Motörhead", false},
    {"Sigur Rós", false},
    {"Guns N' Roses", false},
    {"Sinéad O'Connor", true},
    {"The Rolling Stones", false},
    {"Mötley Crüe", false},
    {"Dave O'Neil", true},
    {"Hüsker Dü", false},
    {"The Who", false},
    {"Blue Öyster Cult", false},
    {"Céline Dion", true},
    {"The Pogues", false},
    {"Ólafur Arnalds", true},
    {"AC/DC", false},
    {"Sonny & Cher", false},
    {"The B-52's", false},
    {"Jean-Michel Jarre", true},
    {"Kraftwerk", false},
    {"Ennio Morricone", true},
    {"Françoise Hardy", true},
    {"The The", false},
};

const QStringList kFirstNames{"Anna",   "Bob",    "Chloé",  "Dmitri", "Eva",  "Finn",  "Grace",
                              "Hans",   "Ingrid", "Jörg",   "Kate",   "Liam", "María", "Nils",
                              "Olga",   "Paul",   "Quinn",  "Rósa",   "Sean", "Tomás", "Ute",
                              "Víctor", "Wanda",  "Xavier", "Yoko",   "Zoë"};
const QStringList kLastNames{"Andersson", "Brown",  "Costa",   "Dubois",   "Eriksen",  "Fischer",
                             "García",    "Hughes", "Ibáñez",  "Jensen",   "Kowalski", "Lévesque",
                             "Müller",    "Nuñez",  "O'Brien", "O'Neil",   "Petrov",   "Quintana",
                             "Rossi",     "Schön",  "Tanaka",  "Ødegaard", "Vogel",    "Walsh"};
const QStringList kAdjectives{"Blue",   "Silent",  "Electric", "Broken", "Golden", "Wild",
                              "Velvet", "Lonely",  "Crimson",  "Frozen", "Happy",  "Último",
                              "Schöne", "Burning", "Midnight", "Paper",  "Sweet",  "Hollow"};
const QStringList kNouns{"Hearts",  "Rivers", "Machines", "Ghosts", "Lights",  "Roads",
                         "Birds",   "Dreams", "Stones",   "Waves",  "Mirrors", "Engines",
                         "Flowers", "Tigers", "Cities",   "Bells",  "Shadows", "Sparks"};
const QStringList kWords{"love",  "night", "summer", "rain",  "fire",   "home",  "heart",
                         "road",  "train", "blue",   "dance", "light",  "river", "city",
                         "dream", "time",  "moon",   "stars", "world",  "girl",  "boy",
                         "café",  "señor", "über",   "smile", "winter", "tears", "sky"};
const QStringList kSpecialTitles{"Don't Look Back",
                                 "Ágætis byrjun",
                                 "Rock 'n' Roll Ain't Noise",
                                 "Café Müller",
                                 "L'été indien",
                                 "Hey Jude",
                                 "Ça plane pour moi",
                                 "Smells Like Teen Spirit",
                                 "Mötorway",
                                 "It's a Long Way to the Top",
                                 "Schrei nach Liebe",
                                 "Jóga",
                                 "Hoppípolla",
                                 "Ace of Spades",
                                 "O'Malley's Bar"};

QString capitalised(QString word) {
    word[0] = word[0].toUpper();
    return word;
}

QString inventedBand(Random& random) {
    if (random.percent(15))
        return random.pick(kFirstNames) + " & the " + random.pick(kNouns);
    const QString core = random.pick(kAdjectives) + " " + random.pick(kNouns);
    return random.percent(30) ? "The " + core : core;
}

}  // namespace

QString sortName(const QString& name, bool person) {
    if (name.startsWith("The ") && name.size() > 4)
        return name.mid(4) + ", The";
    const qsizetype space = name.lastIndexOf(' ');
    if (person && space > 0)
        return name.mid(space + 1) + ", " + name.left(space);
    return name;
}

std::vector<Artist> artists(Random& random, int count) {
    std::vector<Artist> out;
    QSet<QString> taken;
    auto add = [&](const QString& name, bool person) {
        if (taken.contains(name))
            return;
        taken.insert(name);
        out.push_back({qint32(out.size() + 1), name, sortName(name, person)});
    };
    for (const Known& k : kKnownArtists) {
        if (int(out.size()) < count)
            add(QString::fromUtf8(k.name), k.person);
    }
    for (int attempt = 0; int(out.size()) < count; ++attempt) {
        // Past what the word lists give, further bands are numbered ("Blue Hearts 7").
        const bool isPerson = attempt < 4 * count && random.percent(50);
        QString name = isPerson ? person(random) : inventedBand(random);
        if (attempt >= 4 * count)
            name += QStringLiteral(" %1").arg(out.size());
        add(name, isPerson);
    }
    return out;
}

QString person(Random& random) {
    const QString first = random.pick(kFirstNames);
    if (random.percent(60))
        return first + " " + random.pick(kLastNames);
    return first + " " + QChar('A' + random.below(26)) + ". " + random.pick(kLastNames);
}

QString albumTitle(Random& random) {
    switch (random.below(5)) {
        case 0:
            return random.pick(kAdjectives) + " " + random.pick(kNouns);
        case 1:
            return "The " + random.pick(kNouns);
        case 2:
            return random.pick(kNouns) + " of " + capitalised(random.pick(kWords));
        case 3:
            return random.pick(kSpecialTitles);
        default:
            return capitalised(random.pick(kWords)) + " " + capitalised(random.pick(kWords));
    }
}

QString trackTitle(Random& random) {
    switch (random.below(6)) {
        case 0:
            return random.pick(kSpecialTitles);
        case 1:
            return capitalised(random.pick(kWords)) + "'s " + capitalised(random.pick(kWords));
        case 2:
            return "Don't " + capitalised(random.pick(kWords));
        default: {
            QString title = capitalised(random.pick(kWords));
            for (int n = random.below(4); n > 0; --n)
                title += " " + random.pick(kWords);
            return title;
        }
    }
}

QString prose(Random& random, int characters) {
    QString text;
    while (text.size() < characters) {
        QString sentence = capitalised(random.pick(kWords));
        for (int n = random.between(4, 12); n > 0; --n)
            sentence += " " + random.pick(kWords);
        text += sentence + (random.percent(15) ? ".\r\n" : ". ");
    }
    return text.left(characters).trimmed();
}

const QStringList& labels() {
    static const QStringList list{
        "EMI",        "Virgin",     "Island", "Sub Pop", "Warner Bros.",   "Deutsche Grammophon",
        "Smekkleysa", "4AD",        "Motown", "Def Jam", "Bronze Records", "Hot Action Records",
        "Mercury",    "Rough Trade"};
    return list;
}

const QStringList& genres() {
    static const QStringList list{"Rock",    "Pop",   "Jazz",       "Classical",
                                  "Punk",    "Metal", "Electronic", "Folk",
                                  "Chanson", "Soul",  "Hip-Hop",    "Post-Rock"};
    return list;
}

const QStringList& versions() {
    static const QStringList list{"Remix",    "Live", "Radio Edit",     "Extended Version",
                                  "Acoustic", "Demo", "Single Version", "Remastered 2009",
                                  "Club Mix", "Mono"};
    return list;
}

const QStringList& locations() {
    static const QStringList list{
        "Shelf A",    "Shelf B", "Living Room Rack",   "Box 1 (Attic)", "Car",
        "Kids' Room", "Büro",    "Lent to Sean O'Hara"};
    return list;
}

const QStringList& ratings() {
    static const QStringList list{"Poor", "Fair", "Good", "Very good", "Excellent"};
    return list;
}

}  // namespace albumgen::names
