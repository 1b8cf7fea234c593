#include "htmlpage.h"

#include "atomicfile.h"
#include "catalogdocument.h"
#include "fields.h"
#include "formatregistry.h"
#include "htmltext.h"
#include "labels.h"
#include "modXMLSubs.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr size_t kBufferSize = 1 << 16;
constexpr std::string_view kLossyColour = "#FFCC88";
constexpr std::array<std::string_view, 2> kColours = {"#FFFFCC", "#CCFFFF"};

/// Writes one page from top to bottom.
class Page
{
public:
    Page(const QString &path, const PageOptions &options, const ReportSource &source)
        : m_file(path),
          m_options(options),
          m_source(source),
          m_columns(options.format ? 7 : 6)
    {
    }

    void Write(const QString &title);

private:
    using Listing = BrowseTreeModel::Listing;

    void WriteHead(const QByteArray &title);
    void WriteColumnNames();
    void WriteListing(const Listing &listing);
    void WriteMainRow(pugi::xml_node element, const QString &format);
    void WriteTextRow(std::string_view label, std::string_view text, std::string_view lineBreak);
    void BeginRow();
    void EndRow();

    void Line(std::string_view markup) { m_buffer.append(markup).append(kLineEnd); }
    void Line(std::string_view before, std::string_view text, std::string_view after)
    {
        m_buffer.append(before);
        AppendHtmlText(m_buffer, text);
        Line(after);
    }
    void Flush();

    AtomicFile m_file;
    const PageOptions &m_options;
    const ReportSource &m_source;
    const int m_columns; ///< one less than the table has
    std::string_view m_colour;
    bool m_alternate = false;
    std::string m_buffer;
};

void Page::Write(const QString &title)
{
    WriteHead(title.toUtf8());
    ForEachListing(m_source.tree, [this](const Listing &listing) { WriteListing(listing); });
    Line("</table>");
    Line("</body>");
    Line("</html>");
    Flush();
    m_file.Commit();
}

void Page::WriteHead(const QByteArray &title)
{
    const std::string_view titleText(title.constData(), static_cast<size_t>(title.size()));
    Line("<html>");
    Line("<head><title>", titleText, "</title></head>");
    Line("<body>");
    Line("<table width='100%' border='1' rules='groups'>");
    Line("<caption><h1>", titleText, "</h1></caption>");
    Line("<colgroup></colgroup>");
    Line("<colgroup span='2'></colgroup>");
    Line("<colgroup span='3'></colgroup>");
    Line("<colgroup></colgroup>");
    if (m_options.format)
        Line("<colgroup></colgroup>");
    WriteColumnNames();
}

void Page::WriteColumnNames()
{
    Line("<tbody bgcolor='#FFCCCC'>");
    Line("<tr>");
    Line("    <th>Type</th>");
    Line("    <th>Date</th>");
    Line("    <th nowrap>Venue/Title</th>");
    Line("    <th>Length</th>");
    Line("    <th>Source</th>");
    Line("    <th>Grade</th>");
    Line("    <th>Seeder</th>");
    if (m_options.format)
        Line("    <th>Format</th>");
    EndRow();
}

void Page::WriteListing(const Listing &listing)
{
    if (listing.picture == kUncheckedPicture || listing.picture == kWrongDatePicture)
        return;
    const pugi::xml_node element = m_source.document.FirstOfSameId(listing.element);
    const QString format = FormatNameFromKey(listing.picture);
    const bool lossy = m_source.formats.FormatClass(format) == FormatKind::Lossy;
    m_colour = lossy ? kLossyColour : kColours[m_alternate ? 1 : 0];
    m_alternate = !m_alternate;

    WriteMainRow(element, format);
    if (m_options.setList)
        WriteTextRow("<td valign='top'>Set List:</td>", ReadTextElementUtf8(element, Element::kSetList), ",");
    if (m_options.comments)
        WriteTextRow("<td valign='top'>Comments:</td>", ReadTextElementUtf8(element, Element::kComment), "<br>");
    if (m_options.notes)
        WriteTextRow("<td valign='top'>Notes:</td>", ReadTextElementUtf8(element, Element::kNotes), "<br>");
    if (m_buffer.size() >= kBufferSize)
        Flush();
}

void Page::WriteMainRow(pugi::xml_node element, const QString &format)
{
    const ListingFields fields(element);
    BeginRow();
    Line("    <td>", fields.type, "</td>");
    Line("    <td nowrap>", ListingDateText(fields), "</td>");
    Line("    <td nowrap>", fields.venue, "</td>");
    Line("    <td>", fields.length, "</td>");
    Line("    <td>", fields.source, "</td>");
    Line("    <td>", fields.grade, "</td>");
    Line("    <td>", fields.seeder, "</td>");
    if (m_options.format)
        Line("    <td align='center'>", format.toStdString(), "</td>");
    EndRow();
}

void Page::WriteTextRow(std::string_view label, std::string_view text, std::string_view lineBreak)
{
    if (text.empty())
        return;
    BeginRow();
    Line("<td></td>");
    Line(label);
    Line("<td colspan='", std::to_string(m_columns - 1), "'>");
    for (size_t at = text.find(kLineEnd); at != text.npos; at = text.find(kLineEnd)) {
        AppendHtmlText(m_buffer, text.substr(0, at));
        m_buffer.append(lineBreak);
        text.remove_prefix(at + kLineEnd.size());
    }
    Line("", text, "");
    Line("</td>");
    EndRow();
}

void Page::BeginRow()
{
    Line("<tbody bgcolor='", m_colour, "'>");
    Line("<tr>");
}

void Page::EndRow()
{
    Line("</tr>");
    Line("</tbody>");
}

void Page::Flush()
{
    m_file.Write(m_buffer.data(), static_cast<qsizetype>(m_buffer.size()));
    m_buffer.clear();
}

} // namespace

void WriteHtmlPage(const QString &path, const QString &title, const PageOptions &options, const ReportSource &source)
{
    Page(path, options, source).Write(title);
}
