#pragma once

/// \file
/// A page of tables and pictures that reads on wide and narrow screens, from the file system as well as from a
/// server.

#include "common/table.h"

#include <string>
#include <vector>

namespace example {

/// A picture on a page, which opens the picture by itself.
struct Figure {
    /// Relative to the page, of characters that need no encoding.
    std::string m_file;
    std::string m_title;
    /// What stands below the title, a line an entry.
    std::vector<std::string> m_lines;
    /// Asks for the whole width of the page, for a picture that is much wider than high.
    bool m_wide = false;
};

/// A link to a file beside the page.
struct Link {
    /// Relative to the page, of characters that need no encoding.
    std::string m_file;
    std::string m_text;
};

/// An HTML document under construction. All texts are escaped here.
class HtmlPage {
public:
    explicit HtmlPage(std::string const& title);

    void Heading(std::string const& text);
    void Paragraph(std::string const& text);
    /// A paragraph that stands out.
    void Warning(std::string const& text);
    void AddTable(Table const& table);
    void Figures(std::vector<Figure> const& figures);
    void Links(std::vector<Link> const& links);

    /// The whole document.
    std::string Document() const;

private:
    std::string m_head;
    std::string m_body;
};

} // namespace example
