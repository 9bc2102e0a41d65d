# frozen_string_literal: true

# Checks the documents without running anything: each command says whether it is run (document.rb), and each document has a place in the
# navigation of the site.
# Usage, in the project's directory: check_documents.rb

require_relative "document"

NAVIGATION = "tools/docs/mkdocs.yml"

documents = ["README.md", *Dir["docs/**/*.md"].sort]
abort("there are no documents") if documents.size < 20
navigation = File.read(NAVIGATION, encoding: "UTF-8").scan(/: (\S+\.md)$/).flatten
problems = documents.flat_map { |path| Document.new(path).problems }
problems += (documents - navigation).map { |path| "#{path} has no place in the navigation: #{NAVIGATION}" }
abort(problems.join("\n")) unless problems.empty?
puts "#{documents.size} documents, all in the navigation; each command says whether it is run"
