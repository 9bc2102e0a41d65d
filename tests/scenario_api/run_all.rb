# frozen_string_literal: true

# Runs every *_test.rb beside it; ends with a non-zero exit code when one fails.
Dir.glob(File.join(__dir__, "*_test.rb")).each { |path| require path }
