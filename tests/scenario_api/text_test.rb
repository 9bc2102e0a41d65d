# frozen_string_literal: true

require_relative "test_helper"

# What texts of Ruby alone have; conformance_test.rb has the rest.
class TextTest < Minitest::Test
  def test_a_text_of_another_encoding_is_converted
    assert_equal "grüße", ControllerScenario::Text.clean("gr\xFC\xDFe".dup.force_encoding("ISO-8859-1"))
  end
end
