#include "common/html.h"

#include "common/markup.h"

namespace example {
namespace {

constexpr char const* kStyle = R"(
:root { color-scheme: light; }
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1.5rem clamp(0.8rem, 3vw, 3rem) 4rem; max-width: 90rem; background: #f3f5f7;
  color: #26323d; font: 16px/1.5 system-ui, -apple-system, "Segoe UI", Roboto, "DejaVu Sans", sans-serif; }
h1 { font-size: 1.7rem; line-height: 1.2; margin: 0 0 0.5rem; }
h2 { font-size: 1.25rem; margin: 2.8rem 0 0.4rem; padding-top: 0.8rem; border-top: 2px solid #cfd6dd;
  overflow-wrap: anywhere; }
p { margin: 0.3rem 0; max-width: 60rem; overflow-wrap: anywhere; }
.warning { border-left: 4px solid #c8362b; padding: 0.2rem 0.7rem; background: #fbe9e7; }
.scroll { overflow-x: auto; margin: 0.8rem 0; }
table { border-collapse: collapse; background: #fff; font-size: 0.9rem; font-variant-numeric: tabular-nums; }
th, td { padding: 0.3rem 0.75rem; border: 1px solid #dde3e8; text-align: right; white-space: nowrap; }
th { background: #e8edf1; font-weight: 600; white-space: normal; vertical-align: bottom; }
th:first-child, td:first-child { text-align: left; }
.figures { display: grid; gap: 1rem; margin: 0.8rem 0;
  grid-template-columns: repeat(auto-fill, minmax(min(100%, 30rem), 1fr)); }
figure { margin: 0; padding: 0.8rem; background: #fff; border: 1px solid #dde3e8; border-radius: 6px; min-width: 0; }
figure.wide { grid-column: 1 / -1; }
figure img { display: block; width: 100%; height: auto; max-height: 80vh; object-fit: contain; }
figcaption { margin-top: 0.5rem; font-size: 0.9rem; color: #4a5663; overflow-wrap: anywhere; }
figcaption strong { color: #26323d; }
.links a { margin-right: 1.2rem; }
a { color: #0b5cad; }
)";

} // namespace

HtmlPage::HtmlPage(std::string const& title) {
    m_head = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
             "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
             Escape(title) + "</title>\n<style>" + kStyle + "</style>\n</head>\n<body>\n<h1>" + Escape(title) +
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
        for (std::string const& cell : row)
            m_body += '<' + tag + '>' + Escape(cell) + "</" + tag + '>';
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
