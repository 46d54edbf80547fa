#pragma once

#include <QString>

class QTextDocument;

// The project's own small rich-text (RTF) reader and writer, for the translation
// drafts: font and colour tables, bold, italic, underline, strike-through, font, size,
// colour, paragraphs, line breaks and tabs; 8-bit text in the document's code page
// (936, 1252 and the other common ones) and Unicode characters with their fallbacks.
// Everything else (pictures, fields' instructions, style sheets, document information,
// ignorable destinations) is skipped. Hostile input never crashes: unbalanced braces,
// huge numbers and deep nesting are tolerated.

// True when the text starts as an RTF document ("{\rtf", blanks in front allowed).
bool IsRtf(const QString &text);

// Replaces the document's content with the RTF text. A text that is not RTF goes in as
// plain text ("\r\n" as paragraph breaks). Returns whether it was read as RTF.
bool RtfToDocument(const QString &rtf, QTextDocument &document);

// The document as RTF, with "\r\n" line ends: what RtfToDocument reads back the same
// (text, paragraphs, line breaks, tabs and the character formats above).
QString DocumentToRtf(const QTextDocument &document);

// The plain text of a document as the system sees it: paragraphs and line breaks as
// "\r\n".
QString DocumentPlainText(const QTextDocument &document);
