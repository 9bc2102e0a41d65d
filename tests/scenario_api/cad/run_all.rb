# frozen_string_literal: true

# Runs all *_test.rb files beside it; exits with a non-zero code if one fails.
Dir.glob(File.join(__dir__, "*_test.rb")).each { |path| require path }
