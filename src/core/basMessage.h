#pragma once

#include <QString>
#include <span>

// The built-in catalogue text, in the format of "Message.txt".
QString DefaultMessageText();
// The English catalogue, in the same format: a text for every key of the built-in one.
// Loaded over the built-in text when the interface speaks English.
QString EnglishMessageText();
// The texts of Velmar's own additions, in the same format, in Chinese or in English: loaded
// after the built-in catalogue (or the English one) and before "Message.txt".
QString OwnMessageText(bool english);
// Catalogue lines joined with "\r\n", as a file holds them.
QString JoinCatalogueLines(std::span<const char16_t *const> lines);
// The text of a catalogue key through MessageList: an unknown key reads "MESSAGE ERROR".
// Loads the catalogue on first use when start-up has not.
QString Msg(const QString &key);
