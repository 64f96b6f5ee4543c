#include "common/html.h"

#include "common/markup.h"
#include "page_style.h"

namespace example {

HtmlPage::HtmlPage(std::string const& title) {
    m_head = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
             "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
             Escape(title) + "</title>\n<style>" + kPageStyle + "</style>\n</head>\n<body>\n<h1>" + Escape(title) +
             "</h1>\n";
}

void HtmlPage::Heading(std::string const& text) {
    m_body += "<h2>" + Escape(text) + "</h2>\n";
}

void HtmlPage::Paragraph(std::string const& text) {
    m_body += "<p>" + Escape(text) + "</p>\n";
}

void HtmlPage::Warning(std::string const& text) {
    m_body += "<p class=\"warning\">" + Escape(text) + "</p>\n";
}

void HtmlPage::AddTable(Table const& table) {
    auto const append = [&](std::vector<std::string> const& row, std::string const& tag) {
        m_body += "<tr>";
        for (std::size_t column = 0; column < row.size(); ++column)
            m_body += '<' + tag + (table.m_textColumns.count(column) > 0 ? " class=\"text\">" : ">") +
                      Escape(row[column]) + "</" + tag + '>';
        m_body += "</tr>\n";
    };
    m_body += "<div class=\"scroll\"><table>\n<thead>";
    append(table.m_header, "th");
    m_body += "</thead>\n<tbody>\n";
    for (std::vector<std::string> const& row : table.m_rows)
        append(row, "td");
    m_body += "</tbody>\n</table></div>\n";
}

void HtmlPage::Figures(std::vector<Figure> const& figures) {
    m_body += "<div class=\"figures\">\n";
    for (Figure const& figure : figures) {
        std::string const title = Escape(figure.m_title);
        m_body += std::string("<figure") + (figure.m_wide ? " class=\"wide\"" : "") + "><a href=\"" +
                  Escape(figure.m_file) + "\"><img src=\"" + Escape(figure.m_file) + "\" alt=\"" + title +
                  "\" loading=\"lazy\"></a>\n<figcaption><strong>" + title + "</strong>";
        for (std::string const& line : figure.m_lines)
            m_body += "<br>" + Escape(line);
        m_body += "</figcaption></figure>\n";
    }
    m_body += "</div>\n";
}

void HtmlPage::Links(std::vector<Link> const& links) {
    m_body += "<p class=\"links\">";
    for (Link const& link : links)
        m_body += "<a href=\"" + Escape(link.m_file) + "\">" + Escape(link.m_text) + "</a>\n";
    m_body += "</p>\n";
}

std::string HtmlPage::Document() const {
    return m_head + m_body + "</body>\n</html>\n";
}

} // namespace example
