# frozen_string_literal: true

# Checks a site: each link leads to a file and an anchor that exist, and no page loads anything from the network.
# Usage: check_site.rb SITE

require "cgi"
require "set"
require "uri"

# The links and anchors of a site's pages.
class Site
  ATTRIBUTE = /<(\w+)\b[^>]*?\s(href|src)="([^"]*)"/
  ANCHOR = /\s(?:id|name)="([^"]+)"/

  def initialize(directory)
    @directory = File.expand_path(directory)
    @anchors = {}
  end

  def pages
    Dir.glob("#{@directory}/**/*.html").sort
  end

  # One text per link that leads nowhere.
  def problems
    pages.flat_map do |page|
      links(page).filter_map { |tag, target| (problem = problem_of(page, tag, target)) && "#{name(page)}: #{target}: #{problem}" }
    end
  end

  private

  def name(path)
    path.delete_prefix("#{@directory}/")
  end

  def links(page)
    File.read(page, encoding: "UTF-8").scan(ATTRIBUTE).map { |tag, _, target| [tag, CGI.unescapeHTML(target)] }.uniq
  end

  def problem_of(page, tag, target)
    return (tag == "a" ? nil : "is loaded from the network") if target.match?(%r{\A(https?:)?//})
    return if target.match?(/\A(mailto|javascript|data):/)

    path, anchor = target.split("#", 2)
    # The page for a server's missing pages has links from its root.
    return if path.to_s.start_with?("/") && File.basename(page) == "404.html"

    file = path.to_s.empty? ? page : File.expand_path(URI.decode_www_form_component(path.split("?").first), File.dirname(page))
    file = File.join(file, "index.html") if File.directory?(file)
    return "there is no such file" unless File.exist?(file)

    "there is no such anchor" unless anchor.to_s.empty? || !file.end_with?(".html") || anchors(file).include?(URI.decode_www_form_component(anchor))
  end

  def anchors(file)
    @anchors[file] ||= File.read(file, encoding: "UTF-8").scan(ANCHOR).flatten.map { |text| CGI.unescapeHTML(text) }.to_set
  end
end

site = Site.new(ARGV.fetch(0))
abort("#{ARGV[0]}: no pages") if site.pages.size < 20
problems = site.problems
abort(problems.join("\n")) unless problems.empty?
puts "#{site.pages.size} pages, all links and anchors lead somewhere"
