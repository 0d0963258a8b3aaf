#include "app/components/symbol_paths.h"

#include <QHash>

#include <array>

namespace lexiquill {

namespace {

// Each symbol is a list of shapes in a square of 24 by 24. M, L, Q and C go as in SVG, with absolute
// coordinates; Z closes; O cx cy r is a circle; R x y w h r a rounded rectangle; A cx cy r start span an arc
// in degrees, counter-clockwise from three o'clock. What follows F is filled, the rest is drawn as lines.
const QHash<QString, QLatin1StringView> &symbols() {
    using namespace Qt::StringLiterals;
    static const QHash<QString, QLatin1StringView> table{
        {u"character.book.closed"_s,
         "R 5 3 14 18 2.5 M 5 17.5 L 19 17.5 M 9 13 L 12 6.5 L 15 13 M 10 11 L 14 11"_L1},
        {u"calendar.badge.clock"_s, "M 11 20 L 6 20 Q 4 20 4 18 L 4 7 Q 4 5 6 5 L 18 5 Q 20 5 20 7 L 20 11 M "
                                    "4 9.5 L 20 9.5 M 8 3 L 8 6.5 M 16 3 "
                                    "L 16 6.5 O 17 17.5 4.5 M 17 15 L 17 17.7 L 18.8 18.7"_L1},
        {u"list.bullet.rectangle"_s,
         "R 3 4.5 18 15 2.5 M 11 9 L 17 9 M 11 12 L 17 12 M 11 15 L 17 15 F O 7.5 9 1.1 O 7.5 12 1.1 O 7.5 15 1.1"_L1},
        {u"chart.line.uptrend.xyaxis"_s,
         "M 4 4 L 4 20 L 20 20 M 7.5 15.5 L 11 11.5 L 14 13.5 L 19.5 7 M 15.5 6.7 L 19.7 6.7 L 19.7 10.9"_L1},
        {u"person.crop.circle"_s, "O 12 12 9 O 12 9.7 3.1 M 6.2 18.6 C 7.5 13.6 16.5 13.6 17.8 18.6"_L1},
        {u"person.crop.circle.fill.badge.checkmark"_s,
         "A 12 12 9 30 290 O 12 9.7 3.1 M 6.2 18.6 C 7 15.5 11 14.4 13.5 15 M 15.2 18.2 L 17.3 20.3 L 21.5 15.5"_L1},
        {u"sparkle.magnifyingglass"_s, "O 10.5 10.5 6.7 M 15.5 15.5 L 20.5 20.5 F M 10.5 6.6 Q 11 10 14.4 "
                                       "10.5 Q 11 11 10.5 14.4 Q 10 11 6.6 10.5 Q "
                                       "10 10 10.5 6.6 Z"_L1},
        {u"line.3.horizontal"_s, "M 4 7 L 20 7 M 4 12 L 20 12 M 4 17 L 20 17"_L1},
        {u"magnifyingglass"_s, "O 10.5 10.5 6.5 M 15.4 15.4 L 20.5 20.5"_L1},
        {u"keyboard"_s, "R 2.5 6 19 12 2.5 M 8 15 L 16 15 F O 6.3 9.4 0.9 O 10.1 9.4 0.9 O 13.9 9.4 0.9 O "
                        "17.7 9.4 0.9 O 6.3 12.2 0.9 "
                        "O 10.1 12.2 0.9 O 13.9 12.2 0.9 O 17.7 12.2 0.9"_L1},
        {u"gearshape"_s, "O 12 12 3 O 12 12 6.4 M 12 5.6 L 12 2.8 M 12 18.4 L 12 21.2 M 5.6 12 L 2.8 12 M "
                         "18.4 12 L 21.2 12 M 7.5 7.5 L "
                         "5.5 5.5 M 16.5 16.5 L 18.5 18.5 M 7.5 16.5 L 5.5 18.5 M 16.5 7.5 L 18.5 5.5"_L1},
        {u"arrow.triangle.2.circlepath"_s,
         "A 12 12 8 20 140 A 12 12 8 200 140 M 19.9 4.8 L 19.6 9.3 L 15.2 8.8 M 4.1 19.2 L 4.4 14.7 L 8.8 15.2"_L1},
        {u"arrow.triangle.2.circlepath.circle.fill"_s,
         "O 12 12 9.6 A 12 12 5 20 140 A 12 12 5 200 140 M 17 7.4 L 16.8 10.3 L 14 9.9 M 7 16.6 L 7.2 13.7 L 10 14.1"_L1},
        {u"arrow.up.arrow.down.circle"_s,
         "O 12 12 9 M 9.2 16 L 9.2 8 M 6.8 10.2 L 9.2 7.8 L 11.6 10.2 M 14.8 8 "
         "L 14.8 16 M 12.4 13.8 L 14.8 16.2 L 17.2 13.8"_L1},
        {u"arrow.right"_s, "M 4.5 12 L 19 12 M 13.5 6.5 L 19 12 L 13.5 17.5"_L1},
        {u"arrow.clockwise"_s, "A 12 12.5 7.5 50 -310 M 17.5 2.8 L 17.2 7 L 13 6.8"_L1},
        {u"arrow.counterclockwise"_s, "A 12 12.5 7.5 130 310 M 6.5 2.8 L 6.8 7 L 11 6.8"_L1},
        {u"arrow.uturn.backward"_s,
         "M 9 5 L 4.5 9.5 L 9 14 M 5 9.5 L 14 9.5 A 14 14 4.5 90 -180 L 10 18.5"_L1},
        {u"arrow.down.circle"_s, "O 12 12 9 M 12 7.5 L 12 16 M 8.5 12.8 L 12 16.3 L 15.5 12.8"_L1},
        {u"arrow.down.circle.fill"_s, "O 12 12 9 M 12 7.5 L 12 16 M 8.5 12.8 L 12 16.3 L 15.5 12.8"_L1},
        {u"square.and.arrow.up"_s, "M 9 9.5 L 6.5 9.5 Q 5 9.5 5 11 L 5 19 Q 5 20.5 6.5 20.5 L 17.5 20.5 Q 19 "
                                   "20.5 19 19 L 19 11 Q 19 9.5 17.5 9.5 "
                                   "L 15 9.5 M 12 15 L 12 3.5 M 8.3 7 L 12 3.3 L 15.7 7"_L1},
        {u"square.and.arrow.down"_s, "M 9 9.5 L 6.5 9.5 Q 5 9.5 5 11 L 5 19 Q 5 20.5 6.5 20.5 L 17.5 20.5 Q "
                                     "19 20.5 19 19 L 19 11 Q 19 9.5 17.5 9.5 "
                                     "L 15 9.5 M 12 3.5 L 12 15.5 M 8.3 12 L 12 15.7 L 15.7 12"_L1},
        {u"speaker.wave.2"_s,
         "M 4 9.5 L 7.5 9.5 L 12 5.5 L 12 18.5 L 7.5 14.5 L 4 14.5 Z A 11 12 5 -40 80 A 11 12 9 -40 80"_L1},
        {u"speaker.wave.2.fill"_s,
         "A 11 12 5 -40 80 A 11 12 9 -40 80 F M 4 9 L 7.5 9 L 12.4 5 L 12.4 19 L 7.5 15 L 4 15 Z"_L1},
        {u"doc.on.doc"_s,
         "R 8.5 7.5 11 13 2 M 5.5 16.5 Q 4.5 16.5 4.5 15 L 4.5 5.5 Q 4.5 3.5 6.5 3.5 L 13.5 3.5 Q 15.5 3.5 15.5 5"_L1},
        {u"doc.text"_s, "M 6 3.5 L 14 3.5 L 19 8.5 L 19 19 Q 19 20.5 17.5 20.5 L 7.5 20.5 Q 6 20.5 6 19 Z M "
                        "14 3.5 L 14 8.5 L 19 8.5 M "
                        "9 12.5 L 16 12.5 M 9 16 L 16 16"_L1},
        {u"trash"_s, "M 4.5 6.5 L 19.5 6.5 M 9 6.5 L 9.5 4 L 14.5 4 L 15 6.5 M 6.3 6.5 L 7.2 19 Q 7.3 20.5 "
                     "8.8 20.5 L 15.2 20.5 Q "
                     "16.7 20.5 16.8 19 L 17.7 6.5 M 10 10 L 10.3 17 M 14 10 L 13.7 17"_L1},
        {u"xmark"_s, "M 6 6 L 18 18 M 18 6 L 6 18"_L1},
        {u"xmark.circle.fill"_s, "O 12 12 9 M 8.7 8.7 L 15.3 15.3 M 15.3 8.7 L 8.7 15.3"_L1},
        {u"xmark.circle"_s, "O 12 12 9 M 8.7 8.7 L 15.3 15.3 M 15.3 8.7 L 8.7 15.3"_L1},
        {u"checkmark"_s, "M 4.5 12.5 L 9.5 17.8 L 19.5 6.5"_L1},
        {u"checkmark.circle"_s, "O 12 12 9 M 7.8 12.4 L 10.8 15.5 L 16.3 9"_L1},
        {u"checkmark.circle.fill"_s, "O 12 12 9 M 7.8 12.4 L 10.8 15.5 L 16.3 9"_L1},
        {u"checkmark.seal.fill"_s,
         "M 12 2.8 L 14.7 4.9 L 18.1 4.9 L 18.8 8.3 L 21.2 11 L 19.8 14 L 19.6 17.5 L 16.3 18.6 L 13.9 21.2 "
         "L 12 20.6 L "
         "10.1 21.2 L 7.7 18.6 L 4.4 17.5 L 4.2 14 L 2.8 11 L 5.2 8.3 L 5.9 4.9 L 9.3 4.9 Z M 8 12 L 11 15 L 16 9.3"_L1},
        {u"exclamationmark.triangle"_s,
         "M 12 3.8 L 21.2 19.8 L 2.8 19.8 Z M 12 10 L 12 14.5 F O 12 17.2 1.1"_L1},
        {u"exclamationmark.triangle.fill"_s,
         "M 12 3.8 L 21.2 19.8 L 2.8 19.8 Z M 12 10 L 12 14.5 F O 12 17.2 1.1"_L1},
        {u"exclamationmark.circle"_s, "O 12 12 9 M 12 7 L 12 13 F O 12 16.3 1.1"_L1},
        {u"info.circle"_s, "O 12 12 9 M 12 11 L 12 17 F O 12 7.7 1.1"_L1},
        {u"questionmark.circle"_s, "O 12 12 9 A 12 9.7 2.8 170 -215 Q 12 12.5 12 14 F O 12 17 1.1"_L1},
        {u"clock"_s, "O 12 12 9 M 12 6.5 L 12 12.3 L 16 14.5"_L1},
        {u"clock.arrow.circlepath"_s,
         "A 12.5 12 8 160 -320 M 3 7.5 L 4.9 11.5 L 9 9.8 M 12.5 7.5 L 12.5 12.3 L 16 14"_L1},
        {u"calendar"_s, "R 4 5 16 15.5 2.5 M 4 9.8 L 20 9.8 M 8 3 L 8 6.5 M 16 3 L 16 6.5"_L1},
        {u"chevron.right"_s, "M 9 5 L 16 12 L 9 19"_L1},
        {u"chevron.left"_s, "M 15 5 L 8 12 L 15 19"_L1},
        {u"chevron.down"_s, "M 5 9 L 12 16 L 19 9"_L1},
        {u"chevron.up"_s, "M 5 15 L 12 8 L 19 15"_L1},
        {u"chevron.up.chevron.down"_s, "M 7 9.5 L 12 4.5 L 17 9.5 M 7 14.5 L 12 19.5 L 17 14.5"_L1},
        {u"arrow.up.arrow.down"_s,
         "M 8 19.5 L 8 4.5 M 4.5 8 L 8 4.5 L 11.5 8 M 16 4.5 L 16 19.5 M 12.5 16 L 16 19.5 L 19.5 16"_L1},
        {u"line.3.horizontal.decrease.circle"_s,
         "O 12 12 9 M 7.5 9.5 L 16.5 9.5 M 9 12.5 L 15 12.5 M 10.7 15.5 L 13.3 15.5"_L1},
        {u"ellipsis.circle"_s, "O 12 12 9 F O 8 12 1.2 O 12 12 1.2 O 16 12 1.2"_L1},
        {u"ellipsis"_s, "F O 6 12 1.7 O 12 12 1.7 O 18 12 1.7"_L1},
        {u"plus"_s, "M 12 5 L 12 19 M 5 12 L 19 12"_L1},
        {u"minus"_s, "M 5 12 L 19 12"_L1},
        {u"pencil"_s, "M 4.5 19.5 L 5.5 15 L 16 4.5 L 19.5 8 L 9 18.5 Z M 13.5 7 L 17 10.5"_L1},
        {u"note.text"_s, "R 4 4 16 16 2.5 M 8 9 L 16 9 M 8 12.3 L 16 12.3 M 8 15.6 L 12.5 15.6"_L1},
        {u"square.and.pencil"_s, "M 12.5 4.5 L 6.5 4.5 Q 4.5 4.5 4.5 6.5 L 4.5 17.5 Q 4.5 19.5 6.5 19.5 L "
                                 "17.5 19.5 Q 19.5 19.5 19.5 17.5 L "
                                 "19.5 11.5 M 9.5 14.5 L 10.2 11.5 L 18.3 3.4 L 20.6 5.7 L 12.5 13.8 Z"_L1},
        {u"network"_s, "O 12 12 9 M 3 12 L 21 12 M 12 3 C 7 8 7 16 12 21 M 12 3 C 17 8 17 16 12 21"_L1},
        {u"globe"_s, "O 12 12 9 M 3 12 L 21 12 M 12 3 C 7 8 7 16 12 21 M 12 3 C 17 8 17 16 12 21"_L1},
        {u"internaldrive"_s, "R 3 6 18 12 2.5 M 3 13 L 21 13 F O 17.5 15.5 1"_L1},
        {u"book.closed"_s,
         "M 19 17.5 L 6.5 17.5 Q 5 17.5 5 19.2 Q 5 21 6.5 21 L 19 21 L 19 3 L 7 3 Q 5 3 5 5 L 5 19"_L1},
        {u"books.vertical"_s,
         "R 4 4 4.5 16 1 R 8.5 4 4.5 16 1 M 14.2 5.2 L 18 4.2 L 21 19 L 17.2 20 Z M 4 8 L 13 8"_L1},
        {u"books.vertical.fill"_s,
         "M 14.2 5.2 L 18 4.2 L 21 19 L 17.2 20 Z F R 4 4 4.2 16 1 R 9 4 4.2 16 1 M 14.2 5.2 L 18 4.2 L 21 19 L 17.2 20 Z"_L1},
        {u"bell.badge.fill"_s,
         "O 18.5 5.5 2.4 M 10 20.2 Q 12 21.6 14 20.2 F O 18.5 5.5 2.4 M 12 4 C 6.5 4 6.8 9.5 6.5 13 L "
         "4.5 16.5 Q 4.3 17.5 5.3 17.5 L 18.7 17.5 Q 19.7 17.5 19.5 16.5 L 17.5 13 L 17.3 9.8 Q "
         "14.3 8.6 14.2 5.4 Q 13.5 4 12 4 Z"_L1},
        {u"text.book.closed"_s, "R 5 3 14 18 2.5 M 5 17.5 L 19 17.5 M 9 7.5 L 15 7.5 M 9 11 L 13.5 11"_L1},
        {u"cloud.sun.fill"_s,
         "M 16 3 L 16 4.4 M 10.9 5.1 L 11.9 6.1 M 21.1 5.1 L 20.1 6.1 M 23 10 L 21.7 10 A 16 10 3.6 "
         "165 -205 F M 6.5 20 C 1.5 20 1.5 13.7 5.8 13.4 C 5.8 8 13.6 7.2 14.9 12.2 C 20 12.2 20 20 "
         "15 20 Z"_L1},
        {u"icloud"_s,
         "M 7 18.5 C 2 18.5 2 11.7 6.5 11.5 C 6.5 5.5 15 4.5 16.5 10 C 22 10 22 18.5 17 18.5 Z"_L1},
        {u"icloud.and.arrow.up"_s, "M 7 18.5 C 2 18.5 2 11.7 6.5 11.5 C 6.5 5.5 15 4.5 16.5 10 C 22 10 22 "
                                   "18.5 17 18.5 M 12 20.5 L 12 12.5 M 9.3 "
                                   "15 L 12 12.3 L 14.7 15"_L1},
        {u"lock"_s, "R 5.5 10.5 13 10 2 M 8.5 10.5 L 8.5 7.5 A 12 7.5 3.5 180 -180 L 15.5 10.5"_L1},
        {u"lock.fill"_s, "M 8.5 10.5 L 8.5 7.5 A 12 7.5 3.5 180 -180 L 15.5 10.5 F R 5.5 10.5 13 10 2"_L1},
        {u"rectangle.portrait.and.arrow.right"_s,
         "M 13 20 L 6 20 Q 4.5 20 4.5 18.5 L 4.5 5.5 Q 4.5 4 6 4 L 13 4 M 10 12 L 20.5 12 M 16.8 8.3 L 20.5 12 L 16.8 15.7"_L1},
        {u"brain.head.profile"_s, "M 9 20.5 L 9 17.5 Q 5 16.5 5 11 C 5 4.5 18.5 2 19 10.5 L 20.5 13.5 L 19 "
                                  "14.2 L 18.7 17 L 15.5 17.3 L 15.5 20.5 M "
                                  "9.3 10 Q 11.5 6.5 14.5 8.2 M 10 12.8 Q 13 13.8 14.8 11"_L1},
        {u"brain"_s, "M 12 5 C 9.5 2 5.5 4.5 6.3 7.6 C 3 8.8 3.2 12.4 4.8 13.6 C 3.6 17 7.5 19.4 9.4 18.6 C "
                     "10 20.8 12 20.5 12 19 Z "
                     "M 12 5 C 14.5 2 18.5 4.5 17.7 7.6 C 21 8.8 20.8 12.4 19.2 13.6 C 20.4 17 16.5 19.4 "
                     "14.6 18.6 C 14 20.8 12 "
                     "20.5 12 19"_L1},
        {u"flame"_s, "M 12 2.8 C 13 7 18.5 9 18.5 14.5 C 18.5 23 5.5 23 5.5 14.5 C 5.5 11.5 7.5 10 8.3 7.8 C "
                     "9.5 8.5 10 9.5 10.2 10.5 "
                     "C 12 8.5 12.5 6 12 2.8 Z"_L1},
        {u"flame.fill"_s, "F M 12 2.8 C 13 7 18.5 9 18.5 14.5 C 18.5 23 5.5 23 5.5 14.5 C 5.5 11.5 7.5 10 "
                          "8.3 7.8 C 9.5 8.5 10 9.5 10.2 10.5 "
                          "C 12 8.5 12.5 6 12 2.8 Z"_L1},
        {u"star"_s,
         "M 12 3.3 L 14.7 9 L 20.9 9.7 L 16.3 14 L 17.5 20.2 L 12 17.1 L 6.5 20.2 L 7.7 14 L 3.1 9.7 L 9.3 9 Z"_L1},
        {u"star.fill"_s,
         "F M 12 3.3 L 14.7 9 L 20.9 9.7 L 16.3 14 L 17.5 20.2 L 12 17.1 L 6.5 20.2 L 7.7 14 L 3.1 9.7 L 9.3 9 Z"_L1},
        {u"sparkles"_s, "F M 10 4.5 Q 10.8 10.7 17 11.5 Q 10.8 12.3 10 18.5 Q 9.2 12.3 3 11.5 Q 9.2 10.7 10 "
                        "4.5 Z M 18 2.5 Q 18.4 5.6 "
                        "21.5 6 Q 18.4 6.4 18 9.5 Q 17.6 6.4 14.5 6 Q 17.6 5.6 18 2.5 Z M 18.5 15 Q 18.8 "
                        "17.7 21.5 18 Q 18.8 18.3 18.5 "
                        "21 Q 18.2 18.3 15.5 18 Q 18.2 17.7 18.5 15 Z"_L1},
        {u"tag"_s, "M 4 4 L 12 4 L 20.5 12.5 L 12.5 20.5 L 4 12 Z F O 8 8 1.4"_L1},
        {u"rectangle.on.rectangle.angled"_s,
         "R 7 8 14 12.5 2 M 4 16.5 L 3 8 Q 2.8 6 4.8 5.7 L 15 4.3 Q 16.7 4.1 17 5.2"_L1},
        {u"rectangle.stack"_s, "R 4 9.5 16 11 2.2 M 6 6.7 L 18 6.7 M 8 4 L 16 4"_L1},
        {u"list.bullet"_s,
         "M 9 6.5 L 20 6.5 M 9 12 L 20 12 M 9 17.5 L 20 17.5 F O 4.7 6.5 1.2 O 4.7 12 1.2 O 4.7 17.5 1.2"_L1},
        {u"sidebar.left"_s,
         "R 3 4.5 18 15 2.5 M 9.5 4.5 L 9.5 19.5 M 5.3 8 L 7.2 8 M 5.3 10.7 L 7.2 10.7"_L1},
        {u"folder"_s, "M 3.5 18 L 3.5 6.5 Q 3.5 5 5 5 L 9 5 L 11 7.3 L 19 7.3 Q 20.5 7.3 20.5 8.8 L 20.5 18 "
                      "Q 20.5 19.5 19 19.5 L 5 19.5 "
                      "Q 3.5 19.5 3.5 18 Z"_L1},
        {u"chart.bar"_s, "R 4 12 4 8 1 R 10 8 4 12 1 R 16 4 4 16 1"_L1},
        {u"chart.bar.fill"_s, "F R 4 12 4 8 1 R 10 8 4 12 1 R 16 4 4 16 1"_L1},
        {u"chart.pie"_s, "O 12 12 9 M 12 3 L 12 12 L 19.8 16.5"_L1},
        {u"target"_s, "O 12 12 9 O 12 12 5 F O 12 12 1.6"_L1},
        {u"tray"_s, "M 3.5 13.5 L 6.5 5.5 L 17.5 5.5 L 20.5 13.5 L 20.5 18 Q 20.5 19.5 19 19.5 L 5 19.5 Q "
                    "3.5 19.5 3.5 18 Z M 3.5 13.5 "
                    "L 8.5 13.5 Q 9 16 12 16 Q 15 16 15.5 13.5 L 20.5 13.5"_L1},
        {u"wifi.slash"_s, "M 4 4 L 20 20 M 3.5 9.5 Q 6 7.3 9 6.4 M 14 6.2 Q 17.8 7 20.5 9.5 M 6.5 13 Q 8.2 "
                          "11.5 10.3 11 M 15 11.6 Q 16.4 12.2 17.5 "
                          "13 F O 12 17.5 1.5"_L1},
        {u"power"_s, "A 12 13 7.5 125 290 M 12 3.5 L 12 12"_L1},
    };
    return table;
}

/// Reads the numbers and letters of a symbol.
class SymbolReader {
public:
    explicit SymbolReader(QLatin1StringView text) : m_words(QString(text).split(u' ', Qt::SkipEmptyParts)) {}

    SymbolShape read() {
        SymbolShape shape;
        QPainterPath *path = &shape.strokes;
        while (m_next < m_words.size()) {
            const QString &command = m_words[m_next++];
            if (command == u"F")
                path = &shape.fills;
            else
                add(command, *path);
        }
        shape.fills.setFillRule(Qt::WindingFill);
        return shape;
    }

private:
    void add(const QString &command, QPainterPath &path) {
        if (command == u"M") {
            path.moveTo(point());
        } else if (command == u"L") {
            path.lineTo(point());
        } else if (command == u"Q") {
            const QPointF control = point();
            path.quadTo(control, point());
        } else if (command == u"C") {
            const QPointF first = point();
            const QPointF second = point();
            path.cubicTo(first, second, point());
        } else if (command == u"Z") {
            path.closeSubpath();
        } else if (command == u"O") {
            const QPointF centre = point();
            const double radius = number();
            path.addEllipse(centre, radius, radius);
        } else if (command == u"R") {
            const QPointF corner = point();
            const QPointF size = point();
            const double radius = number();
            path.addRoundedRect(QRectF(corner, QSizeF(size.x(), size.y())), radius, radius);
        } else if (command == u"A") {
            addArc(path);
        }
    }

    /// Goes on from where the path is when the arc starts there.
    void addArc(QPainterPath &path) {
        const QPointF centre = point();
        const double radius = number();
        const double start = number();
        const double span = number();
        const QRectF square(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
        QPainterPath from;
        from.arcMoveTo(square, start);
        if ((from.currentPosition() - path.currentPosition()).manhattanLength() > 0.1)
            path.arcMoveTo(square, start);
        path.arcTo(square, start, span);
    }

    double number() { return m_next < m_words.size() ? m_words[m_next++].toDouble() : 0; }
    QPointF point() {
        const double x = number();
        return {x, number()};
    }

    QStringList m_words;
    qsizetype m_next = 0;
};

} // namespace

SymbolShape symbolShape(const QString &name) {
    const auto symbol = symbols().constFind(name);
    return symbol == symbols().cend() ? SymbolShape() : SymbolReader(*symbol).read();
}

QStringList symbolNames() {
    return symbols().keys();
}

} // namespace lexiquill
